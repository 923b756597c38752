// SPDX-License-Identifier: MIT
// The sprite rectangles: glyph cells by rule, panel and indicators by table.
#include "display/sprite_table.h"

#include "display/font.h"

#include <iterator>

namespace quillon {
namespace {

// clang-format off
constexpr Rectangle PICTURES[] = {
    // x, y, width, height
    {120,  8, 392, 88}, // SPRITE_PANEL
    {  0, 84,  32, 12}, // SPRITE_EXT_UNLIT
    { 32, 84,  32, 12}, // SPRITE_EXT_LIT
    { 64, 84,  28, 12}, // SPRITE_PRT_UNLIT
    { 92, 84,  28, 12}, // SPRITE_PRT_LIT
    {  0, 52,  36, 28}, // SPRITE_RUN
    { 36, 52,  36, 28}, // SPRITE_WRT
    { 72, 68,  20, 12}, // SPRITE_TR_UNLIT
    { 92, 68,  20, 12}, // SPRITE_TR_LIT
    { 72, 52,  16, 16}, // SPRITE_S_UNLIT
    { 88, 52,  16, 16}, // SPRITE_S_LIT
    {  0, 40,  40, 12}, // SPRITE_STOP_UNLIT
    { 40, 40,  40, 12}, // SPRITE_STOP_LIT
    {  0, 28,  96, 12}, // SPRITE_DEG
    {  0, 16,  96, 12}, // SPRITE_RAD
    {  0,  4,  96, 12}, // SPRITE_GRA
    {104, 52,  16, 16}, // SPRITE_F_UNLIT
    {104, 36,  16, 16}, // SPRITE_F_LIT
};
// clang-format on

static_assert(SPRITE_PANEL + std::size(PICTURES) == SPRITE_COUNT);

/// Sixteen glyphs to a row, the rows from the bottom of the skin upwards and 48 pixels apart.
Rectangle glyph_rectangle(int code) {
    return {code % 16 * 32, 432 - 48 * (code / 16 - 2), GLYPH_CELL_WIDTH, GLYPH_CELL_HEIGHT};
}

} // namespace

Rectangle sprite_rectangle(int sprite) {
    if (sprite < 0 || sprite >= SPRITE_COUNT)
        return {0, 0, 0, 0};
    if (sprite < SPRITE_PANEL)
        return glyph_rectangle(FIRST_GLYPH_CODE + sprite);
    return PICTURES[sprite - SPRITE_PANEL];
}

Rectangle dot_rectangle(int column, int row) { return {1 + 5 * column, 6 * row, 4, 5}; }

} // namespace quillon
