// SPDX-License-Identifier: MIT
// The mouse on the LCD.
#pragma once

namespace quillon {

struct Machine;

enum class LcdClick {
    LEFT,        ///< the left button is released
    LEFT_DOUBLE, ///< the left button is pressed twice
    RIGHT,       ///< the right button is released
};

/// A click at (x, y) in pixels of the canvas. The angle indicators choose their unit; everything else is EXE, except
/// that the selection of a program area takes a click on one of them, and a double click runs it.
void on_lcd_click(Machine& m, LcdClick click, int x, int y);

} // namespace quillon
