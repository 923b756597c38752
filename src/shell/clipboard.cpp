// SPDX-License-Identifier: MIT
// Clipboard rules.
#include "shell/clipboard.h"

#include "core/charset.h"

namespace quillon {

std::string_view clipboard_part(std::string_view text) {
    constexpr std::size_t COPIED_MAX = 1024;
    return text.substr(0, COPIED_MAX);
}

BoundedText<15> pasted_part(std::string_view clipboard) {
    BoundedText<15> text;
    for (const char c : clipboard.substr(0, text.capacity())) {
        if (c == '\0')
            break;
        if (c != '\n' && as_byte(c) < 0x80)
            text.push_back(c);
    }
    return text;
}

} // namespace quillon
