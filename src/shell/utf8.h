// SPDX-License-Identifier: MIT
// UTF-8, the encoding of all texts that are not the machine's own: its characters, and where a text may be cut.
#pragma once

#include <cstddef>
#include <string_view>

namespace quillon {

/// The length of the well-formed UTF-8 character at `i`, which lies within the text; 0 if the bytes there are none.
std::size_t utf8_length(std::string_view text, std::size_t i);

bool is_valid_utf8(std::string_view text);

/// The first `limit` bytes of a text, less the bytes of a character that the limit would cut in two.
std::string_view cut_utf8(std::string_view text, std::size_t limit);

} // namespace quillon
