// The built-in pictures: their sizes, and that their pixels say what the font, sprite and key tables say.
#include "display/glz.h"
#include "display/resources.h"
#include "display/skin_palette.h"
#include "display/sprite_table.h"
#include "keys/soft_keys.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>

namespace quillon {
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
    struct Row {
        int id, width, height;
        std::size_t bytes;
    };
    for (const Row& row : {Row{128, 90, 42, 4'928}, {129, 512, 480, 246'824}, {130, 448, 240, 108'584}}) {
        const IndexedImage image = picture(row.id);
        EXPECT_EQ(image.width, row.width) << row.id;
        EXPECT_EQ(image.height, row.height) << row.id;
        EXPECT_EQ(write_bitmap(image).size(), row.bytes) << row.id;
    }
    EXPECT_TRUE(image_resource(127).empty());
    EXPECT_TRUE(image_resource(131).empty());
}

TEST(SpriteTable, KeepsSpritesApartAndInside) {
    const IndexedImage skin = picture(SKIN_IMAGE);
    std::vector<int> owners(skin.pixels.size(), -1);
    for (int sprite = 0; sprite < SPRITE_COUNT; ++sprite) {
        const Rectangle part = sprite_rectangle(sprite);
        ASSERT_TRUE(part.x >= 0 && part.y >= 0 && part.width > 0 && part.height > 0) << sprite;
        ASSERT_TRUE(part.x + part.width <= SKIN_WIDTH && part.y + part.height <= SKIN_HEIGHT) << sprite;
        for (int y = part.y; y < part.y + part.height; ++y) {
            for (int x = part.x; x < part.x + part.width; ++x) {
                int& owner = owners[pixel_index(skin, x, y)];
                ASSERT_EQ(owner, -1) << "sprite " << sprite << " lies on another";
                owner = sprite;
            }
        }
    }
    for (std::size_t i = 0; i < owners.size(); ++i)
        ASSERT_TRUE(owners[i] >= 0 || skin.pixels[i] == SKIN_BACKGROUND) << "drawn outside the sprites";
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
            const auto owner = owners.insert({look, meaning}).first;
            EXPECT_EQ(owner->second, meaning) << "layer " << layer << ", key " << index << " looks like another";
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

} // namespace
} // namespace quillon
