// SPDX-License-Identifier: MIT
// Shift-JIS (code page 932), in which a user's own catalogue or listing may be.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

/// Shift-JIS as UTF-8; bytes that are not Shift-JIS become "?".
std::string shift_jis_to_utf8(std::string_view text);

/// The first `limit` bytes of a text, less the bytes of a character that the limit would cut in two.
std::string_view cut_shift_jis(std::string_view text, std::size_t limit);

} // namespace quillon
