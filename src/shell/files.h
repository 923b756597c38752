// Whole files: reading them into memory, with a limit.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillon {

/// The bytes of a file, or nothing when it cannot be read or has more than `limit` bytes. What is no ordinary file is
/// not read: nobody knows how long a pipe or a device takes.
std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit);

/// The first `count` bytes of an ordinary file, or all when it has fewer; nothing when it cannot be read.
std::optional<std::string> read_file_start(const std::string& path, std::size_t count);

/// The same as `read_whole_file` for anything that can be read, and waits for what comes through a pipe.
std::optional<std::string> read_whole_input(const std::string& path, std::size_t limit);

} // namespace quillon
