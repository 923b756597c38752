// SPDX-License-Identifier: MIT
// Writing whole files so that no half file is ever seen: the bytes go into a temporary file in the same folder and
// reach the disk before it takes the file's place. Killed at any moment, the program leaves the old file or the new
// one. What a kill leaves besides, a temporary file called ".quillon-PID-NUMBER", is removed by the next write in that
// folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Writes a file, new or in place of an old one, whose permissions it keeps. A symbolic link stays: what it leads to is
/// replaced. False when it fails; the old file is there then, and nothing else. A file that may not be written, and
/// what is no regular file (a folder, a device), is left alone, which is a failure too.
[[nodiscard]] bool safe_write(const std::string& path, std::string_view bytes);

/// The same, and the old file stays beside the new one, under the first free of the names that end in ".bad", ".bad1",
/// and so on; `kept` gets that name. The copy may be there already after a failure. A failure too when none of a
/// hundred is free.
[[nodiscard]] bool safe_write_keeping_old(const std::string& path, std::string_view bytes, std::string* kept = nullptr);

enum class NewFile {
    WRITTEN,
    NO_FREE_NAME, ///< all the names are taken
    FAILED,
};

/// Writes a new file under the first of these names, all of one folder, that is not taken, and says which. No file is
/// ever replaced, not even by two programs that write at once: each takes a name of its own.
[[nodiscard]] NewFile write_new_file(const std::vector<std::string>& names, std::string_view bytes,
                                     std::string* written = nullptr);

/// Removes the temporary files that programs of this user left in a folder when they were killed.
void remove_leftovers(const std::string& folder);

} // namespace quillon
