// SPDX-License-Identifier: MIT
// Checking and reading skin bitmaps.
#include "display/skin_file.h"

#include "display/little_endian.h"
#include "display/sprite_table.h"

namespace quillon {
namespace {

// Offsets in the file, its 14-byte file header included.
constexpr std::size_t OFFSET_OF_PIXELS = 10;
constexpr std::size_t OFFSET_OF_WIDTH = 18;
constexpr std::size_t OFFSET_OF_HEIGHT = 22;
constexpr std::size_t OFFSET_OF_BIT_COUNT = 28;

} // namespace

SkinFault read_skin_file(std::span<const std::uint8_t> file, IndexedImage& image) {
    if (file.size() < BITMAP_FILE_HEADER_SIZE + BITMAP_INFO_HEADER_SIZE || file[0] != 'B' || file[1] != 'M')
        return SkinFault::NOT_BITMAP;
    if (read_u16(file, OFFSET_OF_BIT_COUNT) != 8)
        return SkinFault::NOT_256;
    if (read_u32(file, OFFSET_OF_WIDTH) != SKIN_WIDTH || read_u32(file, OFFSET_OF_HEIGHT) != SKIN_HEIGHT)
        return SkinFault::WRONG_SIZE;
    const std::size_t pixels = read_u32(file, OFFSET_OF_PIXELS);
    if (pixels < BITMAP_FILE_HEADER_SIZE)
        return SkinFault::UNREADABLE;
    auto read = read_bitmap(file.subspan(BITMAP_FILE_HEADER_SIZE), pixels - BITMAP_FILE_HEADER_SIZE);
    if (!read)
        return SkinFault::UNREADABLE;
    image = std::move(*read);
    return SkinFault::NONE;
}

} // namespace quillon
