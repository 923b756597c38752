// SPDX-License-Identifier: MIT
// Pictures as plain values: a palettised image, a canvas of true colours, and the bitmap form in which
// palettised images are stored (a bitmap file without its 14-byte file header).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillon {

/// 0xRRGGBB.
using Colour = std::uint32_t;

using Palette = std::array<Colour, 256>;

/// A picture of palette indices: row after row from the top, `width` bytes each, without padding.
struct IndexedImage {
    int width = 0;
    int height = 0;
    Palette palette{};
    std::vector<std::uint8_t> pixels;
};

/// A picture of true colours, 0xAARRGGBB: row after row from the top, without padding.
struct Canvas {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// An image of palette index `fill` with a black palette.
IndexedImage make_indexed_image(int width, int height, std::uint8_t fill);

/// An opaque canvas of one colour.
Canvas make_canvas(int width, int height, Colour fill);

/// The position in `pixels` of the pixel (x, y), for both kinds of picture.
template <typename Picture>
constexpr std::size_t pixel_index(const Picture& picture, int x, int y) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(x);
}

constexpr std::size_t BITMAP_FILE_HEADER_SIZE = 14;
constexpr std::size_t BITMAP_INFO_HEADER_SIZE = 40;

/// Offset of the pixels in the block that `write_bitmap` makes: behind the information header and 256
/// colours.
constexpr std::size_t BITMAP_PIXEL_OFFSET = BITMAP_INFO_HEADER_SIZE + 4 * 256;

/// Reads an uncompressed bitmap of 8 bits per pixel with its rows from the bottom up. `block` starts with the
/// information header (40 bytes or more), which the colour table follows; the pixels start at `pixel_offset`
/// in the block. Colours that the block has no room for before its pixels are black; bytes behind the pixels
/// are ignored. Nothing when it is no such bitmap or is cut short.
std::optional<IndexedImage> read_bitmap(std::span<const std::uint8_t> block, std::size_t pixel_offset);

/// The bitmap form of an image: information header, 256 colours as blue, green, red and 0, then the rows from
/// the bottom up, each padded to a multiple of four bytes.
std::vector<std::uint8_t> write_bitmap(const IndexedImage& image);

} // namespace quillon
