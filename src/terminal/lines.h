// SPDX-License-Identifier: MIT
// Reading input: a line, or all of it.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace quillon {

/// Reads a line of any bytes, without its line feed; what is longer than `limit` is cut. False at the end of the input.
bool read_line(std::FILE* file, std::string& line, std::size_t limit);

/// Appends all that is left of the input. False when it cannot be read, or when `text` would have more than `limit`
/// bytes: it has more then.
bool read_rest(std::FILE* file, std::string& text, std::size_t limit);

} // namespace quillon
