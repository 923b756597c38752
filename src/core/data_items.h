// SPDX-License-Identifier: MIT
// The items of DATA statements as text. Like the scanner it is pure.
#pragma once

#include "core/text.h"

namespace quillon {

/// The text of a DATA item: what is longer is cut.
using DataText = BoundedText<63>;

/// Reads the DATA item at `p` and moves past it; false at the end of the statement, whose ":" is skipped. `whole`
/// tells whether the item fitted.
bool read_data_item(const char*& p, DataText& item, bool& whole);

/// Skips the "," after an item; false, with nothing skipped, where anything but that or the end of the statement
/// follows.
bool skip_data_separator(const char*& p);

} // namespace quillon
