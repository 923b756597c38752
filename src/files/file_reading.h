// SPDX-License-Identifier: MIT
// Reading files whole into memory, with a limit, so that no pipe, device or fault in the disk can hold up or mislead
// the program.
#pragma once

#include "shell/disk.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quillon {

/// Why a file could not be read whole, in a few words of the system.
std::string read_fault_text(const FileContents& file);

/// Reads a file of at most `limit` bytes.
FileContents read_file(const std::string& path, std::size_t limit, FileKind kind = FileKind::ORDINARY);

/// The bytes of an ordinary file; nothing if it cannot be read or has more than `limit`.
std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit);

} // namespace quillon
