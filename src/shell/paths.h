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

} // namespace quillon
