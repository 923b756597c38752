// Whole files: reading them into memory, with a limit, and writing them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quillon {

/// The bytes of a file, or nothing when it cannot be read or has more than `limit` bytes.
std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit);

/// Writes a whole file; false when that cannot be.
bool write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes);

} // namespace quillon
