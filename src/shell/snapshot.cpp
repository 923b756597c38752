// SPDX-License-Identifier: MIT
// Making the bytes of a snapshot.
#include "shell/snapshot.h"

#include "display/little_endian.h"

#include <vector>

namespace quillon {
namespace {

constexpr std::uint32_t HEADERS_SIZE = 54;
constexpr std::uint32_t INFO_HEADER_SIZE = 40;
constexpr std::uint32_t BITS_PER_PIXEL = 24;

void append_headers(std::vector<std::uint8_t>& file, const Canvas& canvas, std::uint32_t image_size) {
    append_u16(file, 0x4D42); // "BM"
    append_u32(file, HEADERS_SIZE + image_size);
    append_u32(file, 0);
    append_u32(file, HEADERS_SIZE);
    append_u32(file, INFO_HEADER_SIZE);
    append_u32(file, static_cast<std::uint32_t>(canvas.width));
    append_u32(file, static_cast<std::uint32_t>(canvas.height)); // positive: rows from the bottom up
    append_u16(file, 1);                                         // planes
    append_u16(file, BITS_PER_PIXEL);
    append_u32(file, 0); // no compression
    append_u32(file, image_size);
    file.resize(HEADERS_SIZE); // resolution and colour counts are 0
}

} // namespace

std::string snapshot_bitmap(const Canvas& canvas) {
    const std::size_t row_size = (static_cast<std::size_t>(canvas.width) * 3 + 3) / 4 * 4;
    const std::size_t image_size = row_size * static_cast<std::size_t>(canvas.height);
    std::vector<std::uint8_t> file;
    file.reserve(HEADERS_SIZE + image_size);
    append_headers(file, canvas, static_cast<std::uint32_t>(image_size));
    for (int y = canvas.height - 1; y >= 0; --y) {
        for (int x = 0; x < canvas.width; ++x) {
            const std::uint32_t pixel = canvas.pixels[pixel_index(canvas, x, y)];
            for (int shift = 0; shift <= 16; shift += 8)
                file.push_back(static_cast<std::uint8_t>(pixel >> shift));
        }
        file.resize((file.size() - HEADERS_SIZE + 3) / 4 * 4 + HEADERS_SIZE);
    }
    return {file.begin(), file.end()};
}

} // namespace quillon
