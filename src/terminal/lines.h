// Reading lines of input.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace quillon {

/// Reads a line of any bytes, without its line feed; what is longer than `limit` is cut. False at the end of the input.
bool read_line(std::FILE* file, std::string& line, std::size_t limit);

} // namespace quillon
