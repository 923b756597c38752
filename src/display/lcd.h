// SPDX-License-Identifier: MIT
// The LCD as a picture: the twelve visible characters and the eight indicators, cut out of a skin.
#pragma once

#include "display/image.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillon {

struct Machine;

constexpr int LCD_WIDTH = 392;
constexpr int LCD_HEIGHT = 88;
constexpr int LCD_CELLS = 12;
constexpr int LCD_INDICATORS = 8;

/// The LCD's canvas, the skin that it is drawn from, and what is drawn at the moment.
struct LcdPicture {
    LcdPicture();

    Canvas skin;                                 ///< the skin in true colours; empty until one is installed
    Canvas canvas;                               ///< 392 x 88
    std::array<std::uint8_t, LCD_CELLS> codes{}; ///< characters as drawn, 0 where none is yet
    std::array<int, LCD_INDICATORS> sprites{};   ///< indicators as drawn, in the order of their drawing
};

/// Puts a skin in place and lays down its panel; everything is drawn anew with the next rendering. False, and nothing
/// changes, when the image has not the size of a skin.
bool install_skin(LcdPicture& picture, const IndexedImage& image);

/// The same with the picture of a skin that was in place before.
void show_skin(LcdPicture& picture, const Canvas& skin);

/// Draws what has changed since the last rendering; the display's first visible column is worked out and kept in the
/// record. Returns whether anything was drawn. Without a skin nothing is.
bool render_lcd(LcdPicture& picture, const Machine& m);

/// The names of the indicators that are lit in the picture: EXT, S, F, RUN or WRT, DEG or RAD or GRA, TR, PRT, STOP.
std::vector<std::string_view> lit_indicators(const LcdPicture& picture);

} // namespace quillon
