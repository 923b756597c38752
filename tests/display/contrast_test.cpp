// Colours of our own against what they stand on: 4.5 : 1 for what is read, 3 : 1 for icons in light and in dark
// windows. Measured in the pictures as they are built in, by relative luminance.
#include "display/glz.h"
#include "display/image.h"
#include "display/resources.h"
#include "display/skin_palette.h"
#include "keys/soft_keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace quillon::testing {
namespace {

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

/// The colours within a key's edges, the most frequent first: its face, then its legend.
std::vector<Colour> colours_of_key(const IndexedImage& image, int layer, int key) {
    std::map<std::uint8_t, int> counts;
    for (int y = 3; y < 17; ++y) {
        for (int x = 3; x < 13; ++x) {
            const int column = layer / 3 * 224 + key % SOFT_KEY_COLUMNS * 16 + x;
            const int row = layer % 3 * 80 + key / SOFT_KEY_COLUMNS * 20 + y;
            ++counts[image.pixels.at(pixel_index(image, column, row))];
        }
    }
    std::vector<std::pair<int, Colour>> sorted;
    for (const auto& [index, count] : counts)
        sorted.emplace_back(count, image.palette[index]);
    std::sort(sorted.rbegin(), sorted.rend());
    std::vector<Colour> colours;
    for (const auto& [count, colour] : sorted)
        colours.push_back(colour);
    return colours;
}

TEST(Contrast, OfLegendsOnTheSoftKeyboard) {
    const IndexedImage image = decode_image_resource(image_resource(SOFT_KEYBOARD_IMAGE)).value();
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (int key = 0; key < SOFT_EXE_KEY; ++key) {
            const std::vector<Colour> colours = colours_of_key(image, layer, key);
            ASSERT_EQ(colours.size(), 2U) << "layer " << layer << ", key " << key << ": a face and a legend";
            EXPECT_GE(contrast(colours[0], colours[1]), 4.5) << "layer " << layer << ", key " << key;
        }
    }
}

TEST(Contrast, OfIconsInLightAndDarkWindows) {
    constexpr Colour windows[] = {0xEFEFEF, 0x323232}; // of the toolkit's own style
    int strokes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_RESOURCES "/icons")) {
        if (entry.path().stem() == "quillon")
            continue; // the program's own, which brings its ground along
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
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
