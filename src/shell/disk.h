// SPDX-License-Identifier: MIT
// What the simulator asks of the disk. `files` fills these in from the host's file system; a page in a browser, or a
// test, may have files of its own. Without any, nothing is found and nothing can be written.
#pragma once

#include "core/messages.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// What may be read.
enum class FileKind {
    ORDINARY, ///< nothing that one might wait for: no pipe, no device
    ANY,      ///< a pipe too, to its end; a signal that has a handler ends the wait
};

enum class ReadStatus {
    READ,
    MISSING,    ///< there is no such file
    UNREADABLE, ///< there is one, but it cannot be read: a fault, no permission, not an ordinary file
    TOO_LARGE,
};

struct FileContents {
    ReadStatus status = ReadStatus::MISSING;
    std::string bytes{}; ///< of a file that is too large, as many as the limit allows
    int error = 0;       ///< the system's number for why it cannot be read; 0 if it is not an ordinary file
};

/// Each callback has a harmless default. All are called on the thread that ticks, `read_file` also within a tick
/// (GLOAD). Paths are bytes in the host's own form. None may change the simulator.
struct Disk {
    /// Reads a file of at most `limit` bytes: listings and skins.
    std::function<FileContents(const std::string& path, std::size_t limit, FileKind kind)> read_file =
        [](const std::string&, std::size_t, FileKind) { return FileContents{}; };

    /// Writes a file whole, new or in place of an old one; false when it fails, and the old file is still there.
    std::function<bool(const std::string& path, std::string_view bytes)> write_file =
        [](const std::string&, std::string_view) { return false; };

    /// The path from the root on, of one that starts in the working folder. Links and ".." stay as they are.
    std::function<std::string(const std::string& path)> absolute_path = [](const std::string& path) { return path; };

    /// Whether there is an ordinary file here (links followed): not a folder, pipe or device.
    std::function<bool(const std::string& path)> is_regular_file = [](const std::string&) { return false; };

    /// The user's home folder.
    std::function<std::string()> home_folder = [] { return std::string(); };

    /// Reads a message catalogue in any encoding it may have; nothing when it cannot be read.
    std::function<std::optional<MessageCatalogue>(const std::string& path)> read_catalogue = [](const std::string&) {
        return std::optional<MessageCatalogue>();
    };

    /// The path of the catalogue that comes with the program, by its language: "en" or "ja".
    std::function<std::string(std::string_view language)> installed_catalogue = [](std::string_view) {
        return std::string();
    };
};

} // namespace quillon
