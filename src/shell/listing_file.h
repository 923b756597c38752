// SPDX-License-Identifier: MIT
// Listings as the bytes of their files.
#pragma once

#include "core/controls.h"
#include "shell/disk.h"

#include <string>

namespace quillon {

struct ListingLoad {
    LoadResult result = LoadResult::UNREADABLE;
    bool is_cut = false; ///< loaded only up to a NUL; `system_message` says so
};

/// Makes what was read of a listing file, of up to LISTING_SIZE_MAX bytes, the machine's program, as
/// `load_listing_text` does. What could not be read changes nothing but `system_message`, which says why.
ListingLoad load_listing(Machine& m, const std::string& path, FileContents file);

/// Makes the bytes of a listing file the machine's program.
ListingLoad load_listing_bytes(Machine& m, std::string bytes);

} // namespace quillon
