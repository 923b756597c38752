// SPDX-License-Identifier: MIT
// Where the glyphs, the indicators and the panel lie in the skin image, and where a glyph's dots lie in its
// cell.
#pragma once

namespace quillon {

/// A rectangle in pixels; y counts from the top row.
struct Rectangle {
    int x;
    int y;
    int width;
    int height;
};

constexpr int SKIN_WIDTH = 512;
constexpr int SKIN_HEIGHT = 480;

/// Sprites 0 to 127 are the glyphs of the codes 0x20 to 0x9F; these are the others. A flag of the machine
/// adds to the unlit sprite, the angle unit to SPRITE_DEG.
enum Sprite : int {
    SPRITE_PANEL = 128, ///< the whole LCD face, 392 x 88
    SPRITE_EXT_UNLIT = 129,
    SPRITE_EXT_LIT = 130,
    SPRITE_PRT_UNLIT = 131,
    SPRITE_PRT_LIT = 132,
    SPRITE_RUN = 133, ///< RUN lit, WRT unlit
    SPRITE_WRT = 134, ///< RUN unlit, WRT lit
    SPRITE_TR_UNLIT = 135,
    SPRITE_TR_LIT = 136,
    SPRITE_S_UNLIT = 137,
    SPRITE_S_LIT = 138,
    SPRITE_STOP_UNLIT = 139,
    SPRITE_STOP_LIT = 140,
    SPRITE_DEG = 141, ///< DEG lit, RAD and GRA unlit
    SPRITE_RAD = 142,
    SPRITE_GRA = 143,
    SPRITE_F_UNLIT = 144,
    SPRITE_F_LIT = 145,
};

constexpr int SPRITE_COUNT = 146;

/// The sprite's rectangle in the skin; an empty one (all 0) for a number outside 0 to 145.
Rectangle sprite_rectangle(int sprite);

constexpr int GLYPH_CELL_WIDTH = 32;
constexpr int GLYPH_CELL_HEIGHT = 42;

/// The rectangle of one dot within a glyph cell: `column` 0 to 4 from the left, `row` 0 to 6 from the top.
Rectangle dot_rectangle(int column, int row);

} // namespace quillon
