// Whole files: reading them into memory, with a limit.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillon {

/// The bytes of a file, or nothing when it cannot be read or has more than `limit` bytes.
std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit);

/// The first `count` bytes of a file, or all when it has fewer; nothing when it cannot be read.
std::optional<std::string> read_file_start(const std::string& path, std::size_t count);

} // namespace quillon
