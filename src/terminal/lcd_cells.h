// SPDX-License-Identifier: MIT
// The LCD for a terminal: its dots read off the canvas, and packed two by two into half blocks.
#pragma once

#include "display/lcd.h"

#include <string>
#include <vector>

namespace quillon {

/// The LCD in dots: twelve characters of 5 x 7 with a column between two, row by row. A dot is lit where the canvas is
/// closer to the skin's full block than to its blank, so that skins with glyphs of their own are shown as they are.
constexpr int LCD_DOT_COLUMNS = LCD_CELLS * 6 - 1;
constexpr int LCD_DOT_ROWS = 7;
constexpr int LCD_BLOCK_ROWS = 4; ///< of half blocks

/// Whether the dot at this place is lit; false outside, and without a skin.
bool lcd_dot(const LcdPicture& picture, int column, int row);

/// The rows of half blocks (UTF-8), each of 71 columns; below the last row of dots there is nothing lit.
std::vector<std::string> lcd_block_rows(const LcdPicture& picture);

/// The twelve characters as text, in UTF-8 or, with "?" for what that does not have, in ASCII.
std::string lcd_text(const LcdPicture& picture, bool utf8);

} // namespace quillon
