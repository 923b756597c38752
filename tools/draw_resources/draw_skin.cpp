// SPDX-License-Identifier: MIT
// The default skin: glyph cells from the font, the indicators in both their looks, and the panel they lie on.
#include "draw_resources/drawings.h"

#include "display/font.h"
#include "display/skin_palette.h"
#include "display/sprite_table.h"
#include "draw_resources/pen.h"
#include "draw_resources/typefaces.h"

namespace quillon {
namespace {

constexpr Ink lit{SKIN_LIT, SKIN_HALF_TONE};
// No tone lies between unlit and background, so unlit letters have hard edges.
constexpr Ink unlit{SKIN_UNLIT, SKIN_BACKGROUND};

// The panel's frame, beyond the four indices that are configured.
constexpr std::uint8_t frame_dark = 5;
constexpr std::uint8_t frame_middle = 6;
constexpr std::uint8_t frame_light = 7;

struct IndicatorWord {
    int sprite;
    std::string_view word;
    Point at; // in the sprite
    bool is_lit;
};

// clang-format off
// EXT stands at its left edge: on the panel S and F cover the last four columns of its sprite.
constexpr IndicatorWord indicator_words[] = {
    {SPRITE_EXT_UNLIT,  "EXT",  {0, 1},   false},
    {SPRITE_EXT_LIT,    "EXT",  {0, 1},   true},
    {SPRITE_PRT_UNLIT,  "PRT",  {0, 1},   false},
    {SPRITE_PRT_LIT,    "PRT",  {0, 1},   true},
    {SPRITE_TR_UNLIT,   "TR",   {1, 1},   false},
    {SPRITE_TR_LIT,     "TR",   {1, 1},   true},
    {SPRITE_STOP_UNLIT, "STOP", {1, 1},   false},
    {SPRITE_STOP_LIT,   "STOP", {1, 1},   true},
    {SPRITE_RUN,        "RUN",  {4, 2},   true},
    {SPRITE_RUN,        "WRT",  {3, 16},  false},
    {SPRITE_WRT,        "RUN",  {4, 2},   false},
    {SPRITE_WRT,        "WRT",  {3, 16},  true},
    {SPRITE_DEG,        "DEG",  {2, 1},   true},
    {SPRITE_DEG,        "RAD",  {34, 1},  false},
    {SPRITE_DEG,        "GRA",  {66, 1},  false},
    {SPRITE_RAD,        "DEG",  {2, 1},   false},
    {SPRITE_RAD,        "RAD",  {34, 1},  true},
    {SPRITE_RAD,        "GRA",  {66, 1},  false},
    {SPRITE_GRA,        "DEG",  {2, 1},   false},
    {SPRITE_GRA,        "RAD",  {34, 1},  false},
    {SPRITE_GRA,        "GRA",  {66, 1},  true},
};
// clang-format on

/// A key's letter cut out of a filled box.
struct IndicatorBox {
    int sprite;
    std::string_view letter;
    bool is_lit;
};

constexpr IndicatorBox indicator_boxes[] = {
    {SPRITE_S_UNLIT, "S", false},
    {SPRITE_S_LIT, "S", true},
    {SPRITE_F_UNLIT, "F", false},
    {SPRITE_F_LIT, "F", true},
};

Point sprite_corner(int sprite) {
    const Rectangle rectangle = sprite_rectangle(sprite);
    return {rectangle.x, rectangle.y};
}

void draw_glyph_cell(IndexedImage& skin, int code) {
    const Point cell = sprite_corner(code - FIRST_GLYPH_CODE);
    for (int row = 0; row < GLYPH_ROWS; ++row) {
        for (int column = 0; column < GLYPH_COLUMNS; ++column) {
            const Rectangle dot = dot_rectangle(column, row);
            fill_box(skin, {cell.x + dot.x, cell.y + dot.y}, dot.width, dot.height,
                     glyph_dot(code, column, row) ? SKIN_LIT : SKIN_UNLIT);
        }
    }
}

void draw_indicator_word(IndexedImage& skin, const IndicatorWord& indicator) {
    const Point corner = sprite_corner(indicator.sprite);
    draw_word(skin, {corner.x + indicator.at.x, corner.y + indicator.at.y}, indicator_typeface(), indicator.word,
              indicator.is_lit ? lit : unlit);
}

void draw_indicator_box(IndexedImage& skin, const IndicatorBox& indicator) {
    const Point corner = sprite_corner(indicator.sprite);
    const Ink ink = indicator.is_lit ? lit : unlit;
    const Point box{corner.x + 1, corner.y + 1};
    constexpr int side = 14;
    fill_box(skin, box, side, side, ink.edge);
    fill_soft_box(skin, box, side, side, ink.stroke);
    const int width = word_width(indicator_typeface(), indicator.letter);
    draw_word(skin, {box.x + (side - width + 1) / 2, box.y + 2}, indicator_typeface(), indicator.letter,
              {SKIN_BACKGROUND, ink.stroke});
}

/// A row of the panel's frame: all of it where `corner` is 0, else only so many pixels at each end.
struct FrameRow {
    int y;
    std::uint8_t index;
    int corner;
};

// The frame lies only above and below, with rounded inner corners: the character cells reach the panel's
// right edge and would cut a frame at the sides. Under its upper edge it throws a shadow on the glass, in the
// unlit tone so that it fits any colours.
// clang-format off
constexpr FrameRow frame_rows[] = {
    {0,  frame_dark,   0},
    {1,  frame_dark,   0},
    {2,  frame_middle, 0},
    {3,  SKIN_UNLIT,   0},
    {3,  frame_middle, 3},
    {4,  SKIN_UNLIT,   3},
    {4,  frame_middle, 2},
    {5,  frame_middle, 1},
    {6,  frame_middle, 1},
    {82, frame_light,  1},
    {83, frame_light,  1},
    {84, frame_light,  2},
    {85, frame_light,  4},
    {86, frame_light,  0},
    {87, frame_middle, 0},
};
// clang-format on

void draw_panel(IndexedImage& skin) {
    const Rectangle panel = sprite_rectangle(SPRITE_PANEL);
    for (const FrameRow& row : frame_rows) {
        const int length = row.corner == 0 ? panel.width : row.corner;
        fill_box(skin, {panel.x, panel.y + row.y}, length, 1, row.index);
        fill_box(skin, {panel.x + panel.width - length, panel.y + row.y}, length, 1, row.index);
    }
}

} // namespace

IndexedImage draw_skin() {
    IndexedImage skin = make_indexed_image(SKIN_WIDTH, SKIN_HEIGHT, SKIN_BACKGROUND);
    set_lcd_colours(skin.palette, {});
    skin.palette[frame_dark] = 0x14160F;
    skin.palette[frame_middle] = 0x3C4230;
    skin.palette[frame_light] = 0x6E7660;
    for (int code = FIRST_GLYPH_CODE; code <= LAST_GLYPH_CODE; ++code)
        draw_glyph_cell(skin, code);
    draw_panel(skin);
    for (const IndicatorWord& indicator : indicator_words)
        draw_indicator_word(skin, indicator);
    for (const IndicatorBox& indicator : indicator_boxes)
        draw_indicator_box(skin, indicator);
    return skin;
}

} // namespace quillon
