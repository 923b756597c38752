// SPDX-License-Identifier: MIT
// Listings in files.
#pragma once

#include "core/controls.h"
#include "shell/files.h"

#include <string>

namespace quillon {

struct ListingLoad {
    LoadResult result = LoadResult::UNREADABLE;
    bool is_cut = false; ///< loaded only up to a NUL; `system_message` says so
};

/// Reads a listing file and makes it the machine's program, as `load_listing_text` does. What cannot be read changes
/// nothing but `system_message`, which says why.
ListingLoad load_listing(Machine& m, const std::string& path, FileKind kind = FileKind::ANY);

/// Makes the bytes of a listing file the machine's program.
ListingLoad load_listing_bytes(Machine& m, std::string bytes);

} // namespace quillon
