// SPDX-License-Identifier: MIT
// The soft keyboard's picture: for each layer 14 x 4 keys of 16 x 20 pixels with the legends of the key
// table.
#include "draw_resources/drawings.h"

#include "core/states.h"
#include "display/font.h"
#include "draw_resources/pen.h"
#include "draw_resources/typefaces.h"
#include "keys/soft_keys.h"

#include <string>

namespace quillon {
namespace {

constexpr int key_width = 16;
constexpr int key_height = 20;
constexpr int lower_edge_height = 2; // of a key's face: its front, in shadow
constexpr int layer_width = SOFT_KEY_COLUMNS * key_width;
constexpr int layer_height = SOFT_KEY_ROWS * key_height;
constexpr int layers_down = 3;

enum KeyboardIndex : std::uint8_t {
    CASE,
    LEGEND,
    DARK_LEGEND,
    TINT_S,
    TINT_F,
    TINT_EXT,
    TINT_EXT_S,
    FIRST_FACE, // from here on three indices for each face: its light upper edge, its face, its lower edge
};

enum class Face { Letter, Digit, Operator, Control, Alarm, Exe, S, SLatched, F, FLatched, Ext, ExtLatched };

struct FaceColours {
    Face face;
    Colour upper;
    Colour middle;
    Colour lower;
};

// clang-format off
constexpr FaceColours faces[] = {
    {Face::Letter,     0x505661, 0x3A4049, 0x24282E},
    {Face::Digit,      0x6C7481, 0x545C69, 0x343A43},
    {Face::Operator,   0x5C6674, 0x475160, 0x2D333C},
    {Face::Control,    0x4A4F57, 0x363A41, 0x222529},
    {Face::Alarm,      0xB0524D, 0x8F3533, 0x591E1D},
    {Face::Exe,        0xFFFFFF, 0xDDE1E6, 0x8D939C},
    {Face::S,          0xA5663A, 0x854A22, 0x532C12},
    {Face::SLatched,   0xFFD2A0, 0xFF9A3D, 0xB05D12},
    {Face::F,          0x4A79B5, 0x2E5A94, 0x1A365C},
    {Face::FLatched,   0xC2E0FF, 0x6FB6FF, 0x2D70B8},
    {Face::Ext,        0x4B8F5E, 0x2F6F42, 0x1A4226},
    {Face::ExtLatched, 0xC6F5CF, 0x6EDB86, 0x2E8F47},
};
// clang-format on

constexpr std::uint8_t first_index_of(Face face) {
    return static_cast<std::uint8_t>(FIRST_FACE + 3 * static_cast<int>(face));
}

struct Latches {
    bool shift;
    bool function;
    bool extension;
};

constexpr Latches latches_of[SOFT_LAYER_COUNT] = {
    {false, false, false}, {true, false, false}, {false, true, false},
    {false, false, true},  {true, false, true},  {false, true, true},
};

constexpr char code_of(MachineKey key) { return static_cast<char>(key); }

// clang-format off

constexpr std::string_view arrow_left[] = {
    "....#..",
    "..###..",
    "#######",
    "..###..",
    "....#..",
};

constexpr std::string_view arrow_right[] = {
    "..#....",
    "..###..",
    "#######",
    "..###..",
    "..#....",
};

constexpr std::string_view cross[] = {
    "##...##",
    "###.###",
    ".#####.",
    "..###..",
    ".#####.",
    "###.###",
    "##...##",
};

// clang-format on

/// What stands on a key: a picture, letters of the LCD's font, or one or two lines of small letters.
struct Legend {
    std::span<const std::string_view> picture{};
    std::string large{};
    std::string_view first_line{};
    std::string_view second_line{};
};

/// Words too wide for one line break in the middle, except these.
struct WordBreak {
    std::string_view word;
    std::size_t at;
};

constexpr WordBreak word_breaks[] = {
    {"DEFM", 3},
    {"RAN#", 3},
};

constexpr int widest_line = key_width - 4;

std::size_t break_of(std::string_view word) {
    for (const WordBreak& row : word_breaks)
        if (row.word == word)
            return row.at;
    return word.size() / 2;
}

Legend keyword_legend(std::string_view text) {
    const std::string_view word = text.substr(0, text.find_last_not_of(' ') + 1);
    if (word_width(legend_typeface(), word) <= widest_line)
        return {.first_line = word};
    const std::size_t at = break_of(word);
    return {.first_line = word.substr(0, at), .second_line = word.substr(at)};
}

/// What is short, or stands on the wide key, is written large. A word comes as its text, a sign in the machine's code.
Legend legend_of(const SoftKey& key) {
    const std::string_view legend = key.legend;
    if (key.kind == SoftKeyKind::CLOSE)
        return {.picture = cross};
    if (key.text[0] == code_of(KEY_LEFT) && key.kind == SoftKeyKind::CHARACTER)
        return {.picture = arrow_left};
    if (key.text[0] == code_of(KEY_RIGHT) && key.kind == SoftKeyKind::CHARACTER)
        return {.picture = arrow_right};
    if (legend.size() > 2 && key.kind != SoftKeyKind::EXE)
        return {.first_line = legend};
    if (!legend.empty())
        return {.large = key.legend};
    if (key.text[1] == 0)
        return {.large = key.text.data()};
    return keyword_legend(key.text.data());
}

Face text_face(const SoftKey& key, int index) {
    const int row = index / SOFT_KEY_COLUMNS;
    const int column = index % SOFT_KEY_COLUMNS;
    if (key.text[0] == code_of(KEY_CLEAR))
        return Face::Alarm;
    if (key.text[0] > 0 && key.text[0] < ' ')
        return Face::Control;
    if (column >= 10 && column <= 12)
        return Face::Digit;
    if (column == 13 || row == 0 || (row == 3 && column >= 8))
        return Face::Operator;
    return Face::Letter;
}

Face face_of(const SoftKey& key, int index, const Latches& latches) {
    switch (key.kind) {
    case SoftKeyKind::SHIFT_LATCH: return latches.shift ? Face::SLatched : Face::S;
    case SoftKeyKind::FUNCTION_LATCH: return latches.function ? Face::FLatched : Face::F;
    case SoftKeyKind::EXTENSION_LATCH: return latches.extension ? Face::ExtLatched : Face::Ext;
    case SoftKeyKind::CLOSE: return Face::Control;
    case SoftKeyKind::EXE: return Face::Exe;
    case SoftKeyKind::BREAK: return Face::Alarm;
    case SoftKeyKind::AREA: return Face::Digit;
    default: return text_face(key, index);
    }
}

bool same_key(int layer, int other_layer, int index) {
    const SoftKey& key = soft_key(layer, index);
    const SoftKey& other = soft_key(other_layer, index);
    return key.kind == other.kind && key.text == other.text;
}

/// A legend that a latch chose has that latch's tint, one that needs both EXT and S a tint of its own.
std::uint8_t tint_of(int layer, int index, const Latches& latches) {
    if (same_key(layer, soft_layer(0, 0, 0), index))
        return LEGEND;
    if (latches.shift && latches.extension)
        return same_key(layer, soft_layer(1, 0, 0), index) ? TINT_S : TINT_EXT_S;
    if (latches.shift)
        return TINT_S;
    return latches.function ? TINT_F : TINT_EXT;
}

std::uint8_t legend_index(Face face, std::uint8_t tint) {
    switch (face) {
    case Face::Exe:
    case Face::SLatched:
    case Face::FLatched:
    case Face::ExtLatched: return DARK_LEGEND;
    default: return tint;
    }
}

void draw_centred_word(IndexedImage& image, Point corner, int width, std::string_view word, std::uint8_t index) {
    const int free = width - word_width(legend_typeface(), word);
    if (free < 0)
        stop_drawing("a legend is wider than its key", word);
    const int left = free / 2;
    draw_word(image, {corner.x + left, corner.y}, legend_typeface(), word, {index, index});
}

/// Letters of the LCD's font side by side, one pixel apart.
void draw_large(IndexedImage& image, Point corner, int width, std::string_view letters, std::uint8_t index) {
    const int letters_width = static_cast<int>(letters.size()) * 6 - 1;
    Point at{corner.x + (width - letters_width) / 2, corner.y};
    for (const char letter : letters) {
        draw_small_glyph(image, at, static_cast<unsigned char>(letter), index);
        at.x += 6;
    }
}

void draw_picture(IndexedImage& image, Point corner, int width, std::span<const std::string_view> rows,
                  std::uint8_t index) {
    const int left = (width - static_cast<int>(rows.front().size())) / 2;
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (std::size_t x = 0; x < rows[y].size(); ++x)
            if (rows[y][x] == '#')
                set_pixel(image, {corner.x + left + static_cast<int>(x), corner.y + static_cast<int>(y)}, index);
}

/// How far below a face's upper edge something so high stands in its middle; the lower edge does not count.
constexpr int centred(int height) { return (key_height - 2 - lower_edge_height - height + 1) / 2; }

/// Draws the legend into the key's face, whose upper left corner and width are given.
void draw_legend(IndexedImage& image, Point face, int width, const Legend& legend, std::uint8_t index) {
    constexpr int line_gap = 2;
    const int letters = letter_height(legend_typeface());
    if (!legend.picture.empty())
        draw_picture(image, {face.x, face.y + centred(static_cast<int>(legend.picture.size()))}, width, legend.picture,
                     index);
    else if (!legend.large.empty())
        draw_large(image, {face.x, face.y + centred(GLYPH_ROWS)}, width, legend.large, index);
    else if (legend.second_line.empty())
        draw_centred_word(image, {face.x, face.y + centred(letters)}, width, legend.first_line, index);
    else {
        const int top = face.y + centred(2 * letters + line_gap);
        draw_centred_word(image, {face.x, top}, width, legend.first_line, index);
        draw_centred_word(image, {face.x, top + letters + line_gap}, width, legend.second_line, index);
    }
}

void draw_face(IndexedImage& image, Point corner, int width, Face face) {
    constexpr int height = key_height - 2;
    const std::uint8_t upper = first_index_of(face);
    const auto middle = static_cast<std::uint8_t>(upper + 1);
    const auto lower = static_cast<std::uint8_t>(upper + 2);
    fill_soft_box(image, corner, width, height, lower);
    fill_soft_box(image, corner, width, height - lower_edge_height, middle);
    fill_box(image, {corner.x + 1, corner.y}, width - 2, 1, upper);
}

void draw_key(IndexedImage& image, Point layer_corner, int layer, int index) {
    const SoftKey& key = soft_key(layer, index);
    const int cells = index == SOFT_EXE_KEY ? 2 : 1;
    const int width = cells * key_width - 2;
    const Point corner{layer_corner.x + index % SOFT_KEY_COLUMNS * key_width + 1,
                       layer_corner.y + index / SOFT_KEY_COLUMNS * key_height + 1};
    const Face face = face_of(key, index, latches_of[layer]);
    draw_face(image, corner, width, face);
    draw_legend(image, corner, width, legend_of(key), legend_index(face, tint_of(layer, index, latches_of[layer])));
}

void draw_layer(IndexedImage& image, int layer) {
    const Point corner{layer / layers_down * layer_width, layer % layers_down * layer_height};
    for (int index = 0; index < SOFT_KEY_COUNT; ++index)
        if (index != SOFT_EXE_KEY + 1)
            draw_key(image, corner, layer, index);
}

Palette keyboard_palette() {
    Palette palette{};
    palette[CASE] = 0x1B1D21;
    palette[LEGEND] = 0xF2F0E8;
    palette[DARK_LEGEND] = 0x17191C;
    palette[TINT_S] = 0xFFCB96;
    palette[TINT_F] = 0xB4DCFF;
    palette[TINT_EXT] = 0x8CF0A0;
    palette[TINT_EXT_S] = 0xF0E878;
    for (const FaceColours& row : faces) {
        const std::size_t first = first_index_of(row.face);
        palette[first] = row.upper;
        palette[first + 1] = row.middle;
        palette[first + 2] = row.lower;
    }
    return palette;
}

} // namespace

IndexedImage draw_soft_keyboard() {
    IndexedImage image = make_indexed_image(2 * layer_width, layers_down * layer_height, CASE);
    image.palette = keyboard_palette();
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer)
        draw_layer(image, layer);
    return image;
}

} // namespace quillon
