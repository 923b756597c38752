// SPDX-License-Identifier: MIT
// Palettised images from and to their bitmap form.
#include "display/image.h"

#include "display/little_endian.h"

#include <algorithm>

namespace quillon {
namespace {

// Fields of the information header, by offset.
constexpr std::size_t FIELD_HEADER_SIZE = 0;
constexpr std::size_t FIELD_WIDTH = 4;
constexpr std::size_t FIELD_HEIGHT = 8;
constexpr std::size_t FIELD_BIT_COUNT = 14;
constexpr std::size_t FIELD_COMPRESSION = 16;

constexpr std::uint32_t LARGEST_SIDE = 0x7FFF; // pixels; keeps every size below far from overflow

std::size_t padded_row(std::size_t width) { return (width + 3) / 4 * 4; }

bool is_readable_header(std::span<const std::uint8_t> block) {
    const std::uint32_t width = read_u32(block, FIELD_WIDTH);
    const std::uint32_t height = read_u32(block, FIELD_HEIGHT); // rows from the top: negative, so huge here
    return read_u32(block, FIELD_HEADER_SIZE) >= BITMAP_INFO_HEADER_SIZE && read_u16(block, FIELD_BIT_COUNT) == 8 &&
           read_u32(block, FIELD_COMPRESSION) == 0 && width >= 1 && width <= LARGEST_SIDE && height >= 1 &&
           height <= LARGEST_SIDE;
}

void read_colours(std::span<const std::uint8_t> table, Palette& palette) {
    const std::size_t count = std::min(table.size() / 4, palette.size());
    for (std::size_t i = 0; i < count; ++i)
        palette[i] = read_u32(table, 4 * i) & 0xFFFFFF;
}

void append_info_header(std::vector<std::uint8_t>& block, const IndexedImage& image) {
    append_u32(block, BITMAP_INFO_HEADER_SIZE);
    append_u32(block, static_cast<std::uint32_t>(image.width));
    append_u32(block, static_cast<std::uint32_t>(image.height));
    append_u16(block, 1);                  // planes
    append_u16(block, 8);                  // bits per pixel
    block.resize(BITMAP_INFO_HEADER_SIZE); // uncompressed; no resolution; all 256 colours in use
}

} // namespace

IndexedImage make_indexed_image(int width, int height, std::uint8_t fill) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, {}, std::vector<std::uint8_t>(count, fill)};
}

Canvas make_canvas(int width, int height, Colour fill) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<std::uint32_t>(count, 0xFF000000 | fill)};
}

std::optional<IndexedImage> read_bitmap(std::span<const std::uint8_t> block, std::size_t pixel_offset) {
    if (block.size() < BITMAP_INFO_HEADER_SIZE || !is_readable_header(block))
        return std::nullopt;
    const std::size_t header_size = read_u32(block, FIELD_HEADER_SIZE);
    const std::size_t width = read_u32(block, FIELD_WIDTH);
    const std::size_t height = read_u32(block, FIELD_HEIGHT);
    const std::size_t row = padded_row(width);
    if (pixel_offset < header_size || pixel_offset > block.size() || block.size() - pixel_offset < row * height)
        return std::nullopt;

    IndexedImage image = make_indexed_image(static_cast<int>(width), static_cast<int>(height), 0);
    read_colours(block.subspan(header_size, pixel_offset - header_size), image.palette);
    for (std::size_t y = 0; y < height; ++y) {
        const auto stored = block.subspan(pixel_offset + (height - 1 - y) * row, width);
        std::copy(stored.begin(), stored.end(), image.pixels.begin() + static_cast<std::ptrdiff_t>(y * width));
    }
    return image;
}

std::vector<std::uint8_t> write_bitmap(const IndexedImage& image) {
    std::vector<std::uint8_t> block;
    const auto width = static_cast<std::size_t>(image.width);
    const auto height = static_cast<std::size_t>(image.height);
    block.reserve(BITMAP_PIXEL_OFFSET + padded_row(width) * height);
    append_info_header(block, image);
    for (const Colour colour : image.palette)
        append_u32(block, colour & 0xFFFFFF);
    for (std::size_t y = height; y-- > 0;) {
        const auto begin = image.pixels.begin() + static_cast<std::ptrdiff_t>(y * width);
        block.insert(block.end(), begin, begin + image.width);
        block.resize(block.size() + padded_row(width) - width);
    }
    return block;
}

} // namespace quillon
