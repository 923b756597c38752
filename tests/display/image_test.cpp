// SPDX-License-Identifier: MIT
// The bitmap form of palettised images, and the colours of the LCD.
#include "display/image.h"

#include "display/skin_palette.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace quillon {
namespace {

IndexedImage random_image(int width, int height) {
    std::mt19937 random(8);
    IndexedImage image = make_indexed_image(width, height, 0);
    for (Colour& colour : image.palette)
        colour = static_cast<Colour>(random() & 0xFFFFFF);
    for (std::uint8_t& pixel : image.pixels)
        pixel = static_cast<std::uint8_t>(random());
    return image;
}

TEST(Bitmap, GivesBackWhatWasWritten) {
    for (int width = 1; width <= 9; ++width) {
        const IndexedImage image = random_image(width, 3);
        const auto block = write_bitmap(image);
        EXPECT_EQ(block.size(), 1064U + static_cast<std::size_t>((width + 3) / 4 * 4) * 3);
        const auto read = read_bitmap(block, BITMAP_PIXEL_OFFSET);
        ASSERT_TRUE(read) << width;
        EXPECT_EQ(std::pair(read->width, read->height), std::pair(width, 3));
        EXPECT_EQ(read->palette, image.palette);
        EXPECT_EQ(read->pixels, image.pixels);
    }
}

TEST(Bitmap, LiesAsItShould) {
    IndexedImage image = make_indexed_image(3, 2, 0);
    image.palette[1] = 0x123456;
    image.pixels = {1, 2, 3, 4, 5, 6};
    const auto block = write_bitmap(image);
    EXPECT_EQ(std::vector(block.begin() + 44, block.begin() + 48), (std::vector<std::uint8_t>{0x56, 0x34, 0x12, 0}));
    EXPECT_EQ(std::vector(block.begin() + 1064, block.end()), (std::vector<std::uint8_t>{4, 5, 6, 0, 1, 2, 3, 0}));
}

TEST(Bitmap, TakesOtherHeadersAndShorterColourTables) {
    const IndexedImage image = random_image(5, 4);
    auto longer = write_bitmap(image);
    longer[0] = 124;
    longer.insert(longer.begin() + 40, 84, 0xEE);
    const auto read = read_bitmap(longer, BITMAP_PIXEL_OFFSET + 84);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->palette, image.palette);
    EXPECT_EQ(read->pixels, image.pixels);

    auto shorter = write_bitmap(image);
    shorter.erase(shorter.begin() + 40 + 4 * 16, shorter.begin() + 1064);
    const auto with_few = read_bitmap(shorter, 40 + 4 * 16);
    ASSERT_TRUE(with_few);
    EXPECT_EQ(with_few->palette[15], image.palette[15]);
    EXPECT_EQ(with_few->palette[16], 0U);
    EXPECT_EQ(with_few->pixels, image.pixels);
}

TEST(Bitmap, RefusesWhatItCannotShow) {
    const auto good = write_bitmap(random_image(5, 4));
    const std::tuple<const char*, std::ptrdiff_t, std::vector<std::uint8_t>> rows[] = {
        {"an old header", 0, {12}},
        {"no width", 4, {0, 0, 0, 0}},
        {"a negative width", 4, {0xFB, 0xFF, 0xFF, 0xFF}},
        {"one column too many", 4, {9}},
        {"no height", 8, {0, 0, 0, 0}},
        {"rows from the top", 8, {0xFC, 0xFF, 0xFF, 0xFF}},
        {"one row too many", 8, {5}},
        {"the largest sides", 4, {0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F}},
        {"24 bits", 14, {24}},
        {"compressed", 16, {1}},
    };
    for (const auto& [what, offset, bytes] : rows) {
        auto damaged = good;
        std::copy(bytes.begin(), bytes.end(), damaged.begin() + offset);
        EXPECT_FALSE(read_bitmap(damaged, BITMAP_PIXEL_OFFSET)) << what;
    }
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(read_bitmap(std::span(good).first(size), BITMAP_PIXEL_OFFSET)) << size;
    for (const std::size_t offset :
         {std::size_t{0}, std::size_t{39}, BITMAP_PIXEL_OFFSET + 1, good.size() + 1, SIZE_MAX})
        EXPECT_FALSE(read_bitmap(good, offset)) << offset;
}

TEST(SkinPalette, HasTheColoursOfTheLcdInFourPlaces) {
    Palette palette{};
    palette[0] = palette[5] = 0x777777;
    set_lcd_colours(palette, {.lit = 0xFF2031, .unlit = 0x014050, .background = 0xABCDEF});
    const Palette expected{0x777777, 0xABCDEF, 0x014050, 0x803040, 0xFF2031, 0x777777};
    EXPECT_EQ(palette, expected);
}

} // namespace
} // namespace quillon
