// SPDX-License-Identifier: MIT
// Skins from bitmap files.
#pragma once

#include "display/image.h"

#include <cstdint>
#include <span>

namespace quillon {

/// What is wrong with a skin file.
enum class SkinFault {
    NONE,
    NOT_BITMAP, ///< no "BM" at its start, or cut short
    NOT_256,    ///< not 8 bits per pixel
    WRONG_SIZE, ///< not 512 x 480
    UNREADABLE, ///< compressed, or its pixels lie outside the file
};

/// Reads a skin from the bytes of a bitmap file: 512 x 480 pixels of 8 bits, uncompressed, from the bottom row up. Its
/// palette is taken as it is. `image` changes only when there is no fault.
SkinFault read_skin_file(std::span<const std::uint8_t> file, IndexedImage& image);

} // namespace quillon
