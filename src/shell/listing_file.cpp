// SPDX-License-Identifier: MIT
// Loading what was read from listing files.
#include "shell/listing_file.h"

#include "core/errors.h"
#include "core/listing_elements.h"
#include "core/machine.h"

#include <utility>

namespace quillon {

ListingLoad load_listing(Machine& m, const std::string& path, FileContents file) {
    switch (file.status) {
    case ReadStatus::READ: return load_listing_bytes(m, std::move(file.bytes));
    case ReadStatus::TOO_LARGE: compose_system_message(m, MESSAGE_OUT_OF_MEMORY); break;
    default: compose_system_message(m, MESSAGE_CANNOT_OPEN, ":[%s]", path.c_str()); break;
    }
    return {};
}

ListingLoad load_listing_bytes(Machine& m, std::string bytes) {
    const int cut_line = line_cut_by_nul(bytes);
    const ListingLoad load{load_listing_text(m, std::move(bytes)), cut_line != 0};
    if (load.result != LoadResult::LOADED || !load.is_cut)
        return {load.result};
    compose_system_message(m, MESSAGE_CUT_BY_NUL, ":%d LINE", cut_line);
    return load;
}

} // namespace quillon
