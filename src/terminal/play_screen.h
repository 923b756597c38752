// SPDX-License-Identifier: MIT
// The screen of `play`: the LCD in half blocks, or as a line of text where that is wanted, where there is no room for
// them or the terminal has no UTF-8; the indicators, a message, and a status line.
#pragma once

#include "keys/key_tables.h"

#include <string>

namespace quillon {

struct Simulator;

/// What stands on the screen beside the LCD.
struct ScreenTexts {
    std::string message; ///< UTF-8; empty for none
    KeyLevel level = LEVEL_NONE;
    bool utf8 = false; ///< the terminal draws it
    bool dots = false; ///< the LCD is drawn from its dots where there is room for them
};

/// Gives the screen the size of the terminal, up to one that is far more than it needs. Curses itself takes any size
/// that a terminal claims to have: it is not to ask (`use_env`) before the screen is set up.
void fit_screen();

/// Chooses the colours of the LCD, where the terminal has any.
void set_lcd_colours(const Simulator& s);

/// Draws everything; the terminal sees what has changed.
void draw_screen(const Simulator& s, const ScreenTexts& texts);

/// The status line: area, line, interval between ticks, the prefix key and the level it has chosen, and what to press.
std::string status_text(const Simulator& s, KeyLevel level);

} // namespace quillon
