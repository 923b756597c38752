// SPDX-License-Identifier: MIT
// Drawing into palettised pictures: boxes, letters from tables of readable strings, and the LCD's own font.
#pragma once

#include "display/image.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace quillon {

struct Point {
    int x;
    int y;
};

/// Letters drawn side by side: every line is one row of all of them, with a blank between two letters.
/// '#' is ink, '+' the softened edge of a stroke, '.' nothing. `names` says which letter stands where.
struct LetterStrip {
    std::string_view names;
    std::span<const std::string_view> lines;
};

/// A typeface: its strips, which all have the same number of lines. One free column lies between two letters
/// of a word, or as many as `spacing` says.
struct Typeface {
    std::span<const LetterStrip> strips;
    int spacing;
};

/// The palette indices of a word's strokes and of their softened edges.
struct Ink {
    std::uint8_t stroke;
    std::uint8_t edge;
};

/// Ends the program with a message about `what`: a table of the artwork is wrong.
[[noreturn]] void stop_drawing(const char* message, std::string_view what);

/// The program ends with a message when the pixel lies outside the image.
void set_pixel(IndexedImage& image, Point at, std::uint8_t index);
void fill_box(IndexedImage& image, Point corner, int width, int height, std::uint8_t index);

/// As `fill_box`, leaving out the pixel in each corner.
void fill_soft_box(IndexedImage& image, Point corner, int width, int height, std::uint8_t index);

/// Width in pixels of a word; the program ends with a message when the typeface lacks one of its letters.
int word_width(const Typeface& typeface, std::string_view word);
int letter_height(const Typeface& typeface);
void draw_word(IndexedImage& image, Point corner, const Typeface& typeface, std::string_view word, Ink ink);

/// Draws the LCD's glyph of `code` with one pixel for each dot: 5 x 7.
void draw_small_glyph(IndexedImage& image, Point corner, int code, std::uint8_t index);

} // namespace quillon
