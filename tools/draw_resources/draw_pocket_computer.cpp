// SPDX-License-Identifier: MIT
// The picture of the pocket computer for the About dialog.
#include "draw_resources/drawings.h"

#include "draw_resources/pen.h"
#include "draw_resources/typefaces.h"

namespace quillon {
namespace {

constexpr int picture_width = 90;
constexpr int picture_height = 42;

enum ComputerIndex : std::uint8_t {
    AROUND,
    RIM_LIGHT,
    RIM_DARK,
    BODY,
    PLATE,
    PLATE_LINE,
    GLASS_FRAME,
    GLASS,
    GLASS_SHADE,
    GLASS_TEXT,
    NAME,
    SHADOW,
    FIRST_KEY, // from here on two indices for each kind of key: its face and its lower edge
};

enum class KeyPaint { Letter, Digit, Control, Red, Orange, Blue, Green, White };

struct KeyColours {
    KeyPaint paint;
    Colour face;
    Colour lower;
};

// clang-format off
constexpr KeyColours key_colours[] = {
    {KeyPaint::Letter,  0x7D8591, 0x353A42},
    {KeyPaint::Digit,   0xB4BBC5, 0x565D68},
    {KeyPaint::Control, 0x555C67, 0x25292F},
    {KeyPaint::Red,     0xD0524C, 0x6A2422},
    {KeyPaint::Orange,  0xF0923C, 0x8A4A14},
    {KeyPaint::Blue,    0x5AA2EC, 0x24507F},
    {KeyPaint::Green,   0x5CC776, 0x256338},
    {KeyPaint::White,   0xF4F5F7, 0x8E949D},
};
// clang-format on

constexpr std::uint8_t index_of(KeyPaint paint) {
    return static_cast<std::uint8_t>(FIRST_KEY + 2 * static_cast<int>(paint));
}

/// The keys by their colour: E S F the latches, r red, l letters, d digits, c control, X the EXE key.
constexpr std::string_view key_rows[] = {
    "cEccSFrcrcdddc",
    "lllllllllldddc",
    "lllllllllcdddc",
    "llllllllccddX ",
};

constexpr KeyPaint paint_of(char mark) {
    switch (mark) {
    case 'E': return KeyPaint::Green;
    case 'S': return KeyPaint::Orange;
    case 'F': return KeyPaint::Blue;
    case 'r': return KeyPaint::Red;
    case 'l': return KeyPaint::Letter;
    case 'd': return KeyPaint::Digit;
    case 'X': return KeyPaint::White;
    default: return KeyPaint::Control;
    }
}

void draw_body(IndexedImage& image) {
    const auto rounded = [&](int inset, std::uint8_t index) {
        const int width = picture_width - 2 * inset;
        const int height = picture_height - 1 - 2 * inset;
        fill_box(image, {inset + 2, inset}, width - 4, height, index);
        fill_box(image, {inset + 1, inset + 1}, width - 2, height - 2, index);
        fill_box(image, {inset, inset + 2}, width, height - 4, index);
    };
    fill_box(image, {3, picture_height - 1}, picture_width - 6, 1, SHADOW);
    rounded(0, RIM_DARK);
    fill_box(image, {2, 0}, picture_width - 4, 1, RIM_LIGHT);
    fill_box(image, {1, 1}, picture_width - 2, 1, RIM_LIGHT);
    rounded(1, BODY);
    fill_box(image, {3, 1}, picture_width - 6, 1, RIM_LIGHT);
}

void draw_display(IndexedImage& image) {
    fill_soft_box(image, {3, 3}, 84, 13, PLATE);
    fill_box(image, {4, 15}, 82, 1, PLATE_LINE);
    fill_soft_box(image, {5, 4}, 54, 11, GLASS_FRAME);
    fill_box(image, {6, 5}, 52, 9, GLASS);
    fill_box(image, {6, 5}, 52, 1, GLASS_SHADE);
    draw_word(image, {8, 7}, legend_typeface(), "READY", {GLASS_TEXT, GLASS_TEXT});
    draw_word(image, {31, 7}, legend_typeface(), "P0", {GLASS_TEXT, GLASS_TEXT});
    draw_word(image, {61, 7}, legend_typeface(), "QZ-740", {NAME, NAME});
}

void draw_keys(IndexedImage& image) {
    constexpr int key_pitch = 6;
    constexpr int row_pitch = 5;
    Point key{4, 18};
    for (const std::string_view row : key_rows) {
        key.x = 4;
        for (const char mark : row) {
            const std::uint8_t face = index_of(paint_of(mark));
            const int width = mark == 'X' ? 2 * key_pitch - 1 : key_pitch - 1;
            if (mark != ' ') {
                fill_box(image, key, width, 4, static_cast<std::uint8_t>(face + 1));
                fill_box(image, key, width, 3, face);
            }
            key.x += key_pitch;
        }
        key.y += row_pitch;
    }
}

Palette computer_palette() {
    Palette palette{};
    palette[AROUND] = 0xF0F0F0;
    palette[RIM_LIGHT] = 0xF2F4F6;
    palette[RIM_DARK] = 0x6E757E;
    palette[BODY] = 0xC3C8CE;
    palette[PLATE] = 0x24272C;
    palette[PLATE_LINE] = 0x50565F;
    palette[GLASS_FRAME] = 0x101214;
    palette[GLASS] = 0xB0C86E;
    palette[GLASS_SHADE] = 0x90B068;
    palette[GLASS_TEXT] = 0x001900;
    palette[NAME] = 0xE4E7EB;
    palette[SHADOW] = 0xC8C8C8;
    for (const KeyColours& row : key_colours) {
        palette[index_of(row.paint)] = row.face;
        palette[index_of(row.paint) + std::size_t{1}] = row.lower;
    }
    return palette;
}

} // namespace

IndexedImage draw_pocket_computer() {
    IndexedImage image = make_indexed_image(picture_width, picture_height, AROUND);
    image.palette = computer_palette();
    draw_body(image);
    draw_display(image);
    draw_keys(image);
    return image;
}

} // namespace quillon
