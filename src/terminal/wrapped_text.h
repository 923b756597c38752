// SPDX-License-Identifier: MIT
// Text on lines of a terminal, where some characters take two columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The lines of a text in the encoding of the locale, each of at most so many columns: broken at blanks, within words
/// that are too long, and beside wide characters. One line at least.
std::vector<std::string> wrap_text(std::string_view text, int columns);

} // namespace quillon
