// SPDX-License-Identifier: MIT
// Checking a listing: whatever the bytes, it ends, and a listing without an error is one that the machine loads.
#include "core/controls.h"
#include "fuzz/user.h"

#include "tooling/check.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string listing(fuzz::as_text(data, size));
    const CheckReport report = check_listing(listing);
    const auto s = fuzz::make_simulator();
    const bool loaded = load_listing_text(s->machine, listing) == LoadResult::LOADED;
    fuzz::require(loaded || report.errors > 0, "a listing that does not load has no error");
    return 0;
}
