// SPDX-License-Identifier: MIT
// Numbers in files and resources: least significant byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillon {

/// The 16-bit number at `offset`, which must lie within `bytes` with both its bytes.
constexpr std::uint16_t read_u16(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

/// The 32-bit number at `offset`, which must lie within `bytes` with all its bytes.
constexpr std::uint32_t read_u32(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return read_u16(bytes, offset) | static_cast<std::uint32_t>(read_u16(bytes, offset + 2)) << 16;
}

inline void append_u16(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
    bytes.push_back(static_cast<std::uint8_t>(number));
    bytes.push_back(static_cast<std::uint8_t>(number >> 8));
}

inline void append_u32(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
    append_u16(bytes, number);
    append_u16(bytes, number >> 16);
}

} // namespace quillon
