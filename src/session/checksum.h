// SPDX-License-Identifier: MIT
// zlib's crc32, a byte at a time.
#pragma once

#include <cstdint>

namespace quillon {

constexpr std::uint32_t CRC32_START = 0xFFFFFFFF; ///< the checksum is the complement of what comes out in the end

constexpr std::uint32_t crc32(std::uint32_t crc, std::uint8_t byte) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
        crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    return crc;
}

} // namespace quillon
