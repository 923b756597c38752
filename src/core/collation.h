// SPDX-License-Identifier: MIT
// The order of strings: the machine compares characters by a collation of its own.
#pragma once

#include <string_view>

namespace quillon {

/// The place of a character in the collation; several characters may share one.
unsigned char collation_of(unsigned char byte);

/// Negative, 0 or positive as a sorts before, like or after b.
int compare_strings(std::string_view a, std::string_view b);

} // namespace quillon
