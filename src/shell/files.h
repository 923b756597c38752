// SPDX-License-Identifier: MIT
// Reading files whole into memory, with a limit, so that no pipe, device or fault in the disk can hold up or mislead
// the program.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillon {

/// What may be read.
enum class FileKind {
    ORDINARY, ///< nothing that one might wait for: no pipe, no device
    ANY,      ///< a pipe too, to its end; a signal that has a handler ends the wait
};

enum class ReadStatus {
    READ,
    MISSING,    ///< there is no such file
    UNREADABLE, ///< there is one, but it cannot be read: a fault, no permission, no ordinary file
    TOO_LARGE,
};

struct FileContents {
    ReadStatus status = ReadStatus::MISSING;
    std::string bytes{}; ///< of a file that is too large, as many as the limit allows
    int error = 0;       ///< errno of what cannot be read; 0 for what is no ordinary file
};

/// Why a file could not be read whole, in a few words of the system.
std::string read_fault_text(const FileContents& file);

/// Reads a file of at most `limit` bytes.
FileContents read_file(const std::string& path, std::size_t limit, FileKind kind = FileKind::ORDINARY);

/// The bytes of an ordinary file; nothing if it cannot be read or has more than `limit`.
std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit);

} // namespace quillon
