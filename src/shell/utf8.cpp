// SPDX-License-Identifier: MIT
// Checking and cutting UTF-8.
#include "shell/utf8.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr unsigned byte_at(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

} // namespace

std::size_t utf8_length(std::string_view text, std::size_t i) {
    const unsigned lead = byte_at(text, i);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || i + length > text.size())
        return 0;
    unsigned code = lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte_at(text, i + k) & 0xC0U) != 0x80)
            return 0;
        code = (code << 6) | (byte_at(text, i + k) & 0x3FU);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

bool is_valid_utf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = utf8_length(text, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

std::string_view cut_utf8(std::string_view text, std::size_t limit) {
    std::size_t end = std::min(limit, text.size());
    while (end > 0 && end < text.size() && (byte_at(text, end) & 0xC0U) == 0x80)
        --end;
    return text.substr(0, end);
}

} // namespace quillon
