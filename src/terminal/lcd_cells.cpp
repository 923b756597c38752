// SPDX-License-Identifier: MIT
// Reading dots.
#include "terminal/lcd_cells.h"

#include "core/charset.h"
#include "display/font.h"
#include "display/sprite_table.h"

namespace quillon {
namespace {

constexpr int CELL_DOTS = GLYPH_COLUMNS + 1;
constexpr int CELLS_X = 8;
constexpr int CELLS_Y = 40;

Colour pixel_at(const Canvas& canvas, int x, int y) { return canvas.pixels[pixel_index(canvas, x, y)]; }

/// The square of the distance of two colours.
int distance(Colour a, Colour b) {
    int sum = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int difference = static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

/// A pixel within a dot of a glyph in the skin.
Colour skin_dot(const LcdPicture& picture, int code, int x, int y) {
    const Rectangle glyph = sprite_rectangle(code - FIRST_GLYPH_CODE);
    return pixel_at(picture.skin, glyph.x + x, glyph.y + y);
}

} // namespace

bool lcd_dot(const LcdPicture& picture, int column, int row) {
    const int cell = column / CELL_DOTS;
    const int dot = column % CELL_DOTS;
    const bool inside = column >= 0 && column < LCD_DOT_COLUMNS && row >= 0 && row < LCD_DOT_ROWS;
    if (!inside || dot == GLYPH_COLUMNS || picture.skin.pixels.empty())
        return false;
    const Rectangle place = dot_rectangle(dot, row);
    const int x = place.x + place.width / 2;
    const int y = place.y + place.height / 2;
    const Colour shown = pixel_at(picture.canvas, CELLS_X + cell * GLYPH_CELL_WIDTH + x, CELLS_Y + y);
    return distance(shown, skin_dot(picture, block_code, x, y)) < distance(shown, skin_dot(picture, ' ', x, y));
}

std::vector<std::string> lcd_block_rows(const LcdPicture& picture) {
    static constexpr const char* BLOCKS[] = {" ", "\u2580", "\u2584", "\u2588"}; // none, upper, lower, both
    std::vector<std::string> rows;
    for (int row = 0; row < LCD_BLOCK_ROWS; ++row) {
        std::string& text = rows.emplace_back();
        for (int column = 0; column < LCD_DOT_COLUMNS; ++column) {
            const int upper = lcd_dot(picture, column, 2 * row) ? 1 : 0;
            const int lower = lcd_dot(picture, column, 2 * row + 1) ? 2 : 0;
            text += BLOCKS[upper + lower];
        }
    }
    return rows;
}

std::string lcd_text(const LcdPicture& picture, bool utf8) {
    std::string text;
    for (const std::uint8_t code : picture.codes) {
        const std::string_view character = code == 0 ? " " : unicode_of(code);
        const bool plain = character.size() == 1;
        text += utf8 || plain ? character : "?";
    }
    return text;
}

} // namespace quillon
