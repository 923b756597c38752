// SPDX-License-Identifier: MIT
// The built-in pictures: their sizes, that their pixels say what the sprite and key tables say, and their contrast.
#include "display/glz.h"
#include "display/image.h"
#include "display/resources.h"
#include "display/skin_palette.h"
#include "display/sprite_table.h"
#include "keys/soft_keys.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace quillon::testing {
namespace {

using Pixels = std::vector<std::uint8_t>;

IndexedImage picture(int id) { return decode_image_resource(image_resource(id)).value(); }

Pixels cut_out(const IndexedImage& image, const Rectangle& part) {
    Pixels pixels;
    for (int y = part.y; y < part.y + part.height; ++y)
        for (int x = part.x; x < part.x + part.width; ++x)
            pixels.push_back(image.pixels.at(pixel_index(image, x, y)));
    return pixels;
}

TEST(Artwork, HasTheStatedSizes) {
    for (const auto& [id, width, height] : {std::array{128, 90, 42}, {129, 512, 480}, {130, 448, 240}})
        EXPECT_EQ(std::pair(picture(id).width, picture(id).height), std::pair(width, height)) << id;
    for (const int id : {127, 131})
        EXPECT_TRUE(image_resource(id).empty());
    for (const int sprite : {-1, SPRITE_COUNT})
        EXPECT_EQ(sprite_rectangle(sprite).width, 0);
}

/// Does every pixel of `unlit` in the unlit tone stand lit in `lit`, and does each have only its own tones?
void expect_pair(const Pixels& unlit, const Pixels& lit, const char* name) {
    int strokes = 0;
    for (std::size_t i = 0; i < unlit.size(); ++i) {
        ASSERT_TRUE(unlit[i] == SKIN_BACKGROUND || unlit[i] == SKIN_UNLIT) << name;
        ASSERT_TRUE(lit[i] == SKIN_BACKGROUND || lit[i] == SKIN_HALF_TONE || lit[i] == SKIN_LIT) << name;
        ASSERT_EQ(unlit[i] == SKIN_UNLIT, lit[i] == SKIN_LIT) << name;
        strokes += lit[i] == SKIN_LIT ? 1 : 0;
    }
    EXPECT_GT(strokes, 60) << name;
}

Pixels part_of(const IndexedImage& skin, int sprite, Rectangle part) {
    const Rectangle whole = sprite_rectangle(sprite);
    return cut_out(skin, {whole.x + part.x, whole.y + part.y, part.width, part.height});
}

TEST(Skin, ShowsIndicatorsLitAndUnlit) {
    struct Row {
        const char* name;
        int unlit, lit;
        Rectangle part; // of both sprites
    };
    const Row rows[] = {
        {"EXT", SPRITE_EXT_UNLIT, SPRITE_EXT_LIT, {0, 0, 32, 12}},
        {"PRT", SPRITE_PRT_UNLIT, SPRITE_PRT_LIT, {0, 0, 28, 12}},
        {"RUN", SPRITE_WRT, SPRITE_RUN, {0, 0, 36, 14}},
        {"WRT", SPRITE_RUN, SPRITE_WRT, {0, 14, 36, 14}},
        {"TR", SPRITE_TR_UNLIT, SPRITE_TR_LIT, {0, 0, 20, 12}},
        {"S", SPRITE_S_UNLIT, SPRITE_S_LIT, {0, 0, 16, 16}},
        {"F", SPRITE_F_UNLIT, SPRITE_F_LIT, {0, 0, 16, 16}},
        {"STOP", SPRITE_STOP_UNLIT, SPRITE_STOP_LIT, {0, 0, 40, 12}},
        {"DEG", SPRITE_RAD, SPRITE_DEG, {0, 0, 31, 12}},
        {"RAD", SPRITE_GRA, SPRITE_RAD, {31, 0, 32, 12}},
        {"GRA", SPRITE_DEG, SPRITE_GRA, {63, 0, 33, 12}},
    };
    const IndexedImage skin = picture(SKIN_IMAGE);
    for (const Row& row : rows)
        expect_pair(part_of(skin, row.unlit, row.part), part_of(skin, row.lit, row.part), row.name);
    for (const std::uint8_t pixel : part_of(skin, SPRITE_EXT_LIT, {28, 0, 4, 12}))
        EXPECT_EQ(pixel, SKIN_BACKGROUND) << "S and F cover the last four columns of EXT";
}

Rectangle key_cell(int layer, int index) {
    return {layer / 3 * 224 + index % 14 * 16, layer % 3 * 80 + index / 14 * 20, 16, 20};
}

TEST(SoftKeyboardPicture, HasALegendOfItsOwnForEveryKey) {
    const IndexedImage image = picture(SOFT_KEYBOARD_IMAGE);
    std::map<std::string, std::pair<SoftKeyKind, std::array<char, 8>>> owners;
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (int index = 0; index < SOFT_EXE_KEY; ++index) {
            const SoftKey& key = soft_key(layer, index);
            const auto meaning = std::pair(key.kind, key.text);
            const Pixels pixels = cut_out(image, key_cell(layer, index));
            const std::string look(pixels.begin(), pixels.end());
            EXPECT_EQ(owners.insert({look, meaning}).first->second, meaning)
                << "layer " << layer << ", key " << index << " looks like another";
        }
    }
}

TEST(SoftKeyboardPicture, LightsTheLatchesOfItsLayer) {
    constexpr int extension = 1, shift = 4, function = 5; // keys
    const std::set<int> lit[] = {{}, {shift}, {function}, {extension}, {extension, shift}, {extension, function}};
    const IndexedImage image = picture(SOFT_KEYBOARD_IMAGE);
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (const int key : {extension, shift, function}) {
            const bool differs = cut_out(image, key_cell(layer, key)) != cut_out(image, key_cell(0, key));
            EXPECT_EQ(differs, lit[layer].contains(key)) << "layer " << layer << ", key " << key;
        }
    }
}

// Colours of our own against what they stand on, by relative luminance: 4.5 : 1 for what is read, 3 : 1 for icons in
// light and in dark windows.
double luminance(Colour colour) {
    double sum = 0;
    for (const auto& [shift, weight] : {std::pair{16, 0.2126}, {8, 0.7152}, {0, 0.0722}}) {
        const double channel = ((colour >> shift) & 0xFF) / 255.0;
        sum += weight * (channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double contrast(Colour a, Colour b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Contrast, OfLitDotsOnTheLcd) {
    const LcdColours colours;
    EXPECT_GE(contrast(colours.lit, colours.background), 4.5);
    EXPECT_GE(contrast(colours.lit, colours.unlit), 4.5) << "a lit dot beside an unlit one";
}

/// Within each key's edges the colours are two, its face and its legend.
TEST(Contrast, OfLegendsOnTheSoftKeyboard) {
    const IndexedImage image = picture(SOFT_KEYBOARD_IMAGE);
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (int key = 0; key < SOFT_EXE_KEY; ++key) {
            const Rectangle cell = key_cell(layer, key);
            const Pixels inner = cut_out(image, {cell.x + 3, cell.y + 3, 10, 14});
            const std::set<std::uint8_t> colours(inner.begin(), inner.end());
            ASSERT_EQ(colours.size(), 2U) << "layer " << layer << ", key " << key;
            const double found = contrast(image.palette[*colours.begin()], image.palette[*colours.rbegin()]);
            EXPECT_GE(found, 4.5) << "layer " << layer << ", key " << key;
        }
    }
}

TEST(Contrast, OfIconsInLightAndDarkWindows) {
    constexpr Colour windows[] = {0xEFEFEF, 0x323232}; // of the toolkit's own style
    int strokes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_RESOURCES "/icons")) {
        if (entry.path().stem() == "quillon")
            continue; // the program's own, which brings its ground along
        const std::string text = bytes_of(entry.path());
        const std::string mark = "stroke=\"#";
        for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1), ++strokes) {
            const auto colour = static_cast<Colour>(std::stoul(text.substr(at + mark.size(), 6), nullptr, 16));
            for (const Colour window : windows)
                EXPECT_GE(contrast(colour, window), 3.0) << entry.path().filename() << ' ' << text.substr(at, 16);
        }
    }
    EXPECT_GE(strokes, 13);
}

} // namespace
} // namespace quillon::testing
