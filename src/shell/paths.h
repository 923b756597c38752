// SPDX-License-Identifier: MIT
// Parts of file paths. Both "/" and "\" separate, since listings and settings may come from either world.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The folder of a path with its last separator, empty when it has none.
std::string folder_of(std::string_view path);

/// The name behind the last separator.
std::string_view name_of(std::string_view path);

/// The path from the root on, of one that starts in the working folder. Links and ".." stay as they are.
std::string absolute_path(const std::string& path);

/// Whether there is an ordinary file here (links followed): not a folder, pipe or device.
bool is_regular_file(const std::string& path);

} // namespace quillon
