// SPDX-License-Identifier: MIT
// Snapshots: the file byte by byte against the canvas.
#include "shell/snapshot.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

Canvas speckled(int width, int height) {
    Canvas canvas = make_canvas(width, height, 0);
    std::uint32_t colour = 1;
    for (std::uint32_t& pixel : canvas.pixels)
        pixel = 0xFF000000U | ((colour = colour * 1664525U + 1013904223U) >> 8);
    return canvas;
}

TEST(Snapshot, LiesAsItShould) {
    for (const auto& [width, height] : {std::pair{392U, 88U}, {5, 3}, {1, 1}}) {
        SCOPED_TRACE(width);
        const Canvas canvas = speckled(static_cast<int>(width), static_cast<int>(height));
        const unsigned row_size = (width * 3 + 3) / 4 * 4, image_size = row_size * height;
        const std::pair<int, unsigned> fields[] = {
            // bytes, and the number in them
            {2, 0x4D42}, {4, image_size + 54}, {4, 0},      {4, 54}, // and the second header:
            {4, 40},     {4, width},           {4, height}, {2, 1},  {2, 24},
            {4, 0},      {4, image_size},      {4, 0},      {4, 0},  {4, 0},
            {4, 0}};
        std::string expected;
        for (const auto& [size, number] : fields)
            for (int i = 0; i < size; ++i)
                expected += static_cast<char>(number >> (8 * i));
        std::string rows; // from the bottom up, blue first, each padded
        for (int y = canvas.height - 1; y >= 0; --y) {
            for (int x = 0; x < canvas.width; ++x)
                for (const int shift : {0, 8, 16})
                    rows += static_cast<char>(canvas.pixels[pixel_index(canvas, x, y)] >> shift);
            rows.resize((rows.size() + 3) / 4 * 4);
        }
        EXPECT_TRUE(snapshot_bitmap(canvas) == expected + rows);
    }
}

} // namespace
} // namespace quillon::testing
