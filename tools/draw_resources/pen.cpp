// SPDX-License-Identifier: MIT
// Boxes and letters into palettised pictures.
#include "draw_resources/pen.h"

#include "display/font.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace quillon {
namespace {

/// Where a letter stands in its typeface: its columns in the lines of a strip.
struct LetterPlace {
    std::span<const std::string_view> lines;
    std::size_t begin;
    std::size_t width;
};

/// The columns of the letter at `position` of a strip.
LetterPlace place_in_strip(const LetterStrip& strip, std::size_t position) {
    const std::string_view line = strip.lines.front();
    std::size_t begin = 0;
    for (std::size_t i = 0; i < position; ++i)
        begin = line.find(' ', begin) + 1;
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    return {strip.lines, begin, end - begin};
}

LetterPlace find_letter(const Typeface& typeface, char letter) {
    for (const LetterStrip& strip : typeface.strips) {
        const std::size_t position = strip.names.find(letter);
        if (position != std::string_view::npos)
            return place_in_strip(strip, position);
    }
    stop_drawing("a typeface lacks a letter", {&letter, 1});
}

void draw_letter(IndexedImage& image, Point corner, const LetterPlace& letter, Ink ink) {
    for (std::size_t row = 0; row < letter.lines.size(); ++row) {
        for (std::size_t column = 0; column < letter.width; ++column) {
            const char mark = letter.lines[row][letter.begin + column];
            const Point at{corner.x + static_cast<int>(column), corner.y + static_cast<int>(row)};
            if (mark == '#')
                set_pixel(image, at, ink.stroke);
            else if (mark == '+')
                set_pixel(image, at, ink.edge);
        }
    }
}

} // namespace

void stop_drawing(const char* message, std::string_view what) {
    std::fprintf(stderr, "draw_resources: %s: \"%.*s\"\n", message, static_cast<int>(what.size()), what.data());
    std::exit(1);
}

void set_pixel(IndexedImage& image, Point at, std::uint8_t index) {
    if (at.x < 0 || at.x >= image.width || at.y < 0 || at.y >= image.height)
        stop_drawing("drawn outside the picture", "a pixel");
    image.pixels[pixel_index(image, at.x, at.y)] = index;
}

void fill_box(IndexedImage& image, Point corner, int width, int height, std::uint8_t index) {
    for (int y = corner.y; y < corner.y + height; ++y)
        for (int x = corner.x; x < corner.x + width; ++x)
            set_pixel(image, {x, y}, index);
}

void fill_soft_box(IndexedImage& image, Point corner, int width, int height, std::uint8_t index) {
    fill_box(image, {corner.x + 1, corner.y}, width - 2, height, index);
    fill_box(image, {corner.x, corner.y + 1}, width, height - 2, index);
}

int word_width(const Typeface& typeface, std::string_view word) {
    int width = 0;
    for (const char letter : word)
        width += static_cast<int>(find_letter(typeface, letter).width) + typeface.spacing;
    return word.empty() ? 0 : width - typeface.spacing;
}

int letter_height(const Typeface& typeface) { return static_cast<int>(typeface.strips.front().lines.size()); }

void draw_word(IndexedImage& image, Point corner, const Typeface& typeface, std::string_view word, Ink ink) {
    for (const char letter : word) {
        const LetterPlace place = find_letter(typeface, letter);
        draw_letter(image, corner, place, ink);
        corner.x += static_cast<int>(place.width) + typeface.spacing;
    }
}

void draw_small_glyph(IndexedImage& image, Point corner, int code, std::uint8_t index) {
    for (int row = 0; row < GLYPH_ROWS; ++row)
        for (int column = 0; column < GLYPH_COLUMNS; ++column)
            if (glyph_dot(code, column, row))
                set_pixel(image, {corner.x + column, corner.y + row}, index);
}

} // namespace quillon
