// SPDX-License-Identifier: MIT
// What of a text goes to and comes from the clipboard.
#pragma once

#include "core/text.h"

#include <string>
#include <string_view>

namespace quillon {

/// The part of a machine text that is copied: its first 1,024 characters.
std::string_view clipboard_part(std::string_view text);

/// What a line takes over from the clipboard: of its first 15 bytes, up to a NUL, those that are no line feed and no
/// byte from 0x80 on.
BoundedText<15> pasted_part(std::string_view clipboard);

} // namespace quillon
