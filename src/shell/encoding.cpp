// SPDX-License-Identifier: MIT
// UTF-8 checks, and the C library's conversion from Shift-JIS.
#include "shell/encoding.h"

#include <iconv.h>

#include <algorithm>
#include <memory>

namespace quillon {
namespace {

constexpr unsigned byte_at(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

bool is_lead_byte(unsigned byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

struct CloseConverter {
    using pointer = iconv_t;
    void operator()(iconv_t converter) const { iconv_close(converter); }
};

using Converter = std::unique_ptr<iconv_t, CloseConverter>;

/// The C library's converter, null if it has none. Some libraries do not know the code page, which adds characters of
/// its own to Shift-JIS.
Converter open_converter() {
    for (const char* charset : {"CP932", "SHIFT_JIS"}) {
        const iconv_t converter = iconv_open("UTF-8", charset);
        if (converter != reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): its word for an error
            return Converter(converter);
    }
    return {};
}

/// The bytes of the character at `i`; a lead byte without its second one stands alone.
std::size_t shift_jis_length(std::string_view text, std::size_t i) {
    const bool has_second = is_lead_byte(byte_at(text, i)) && i + 1 < text.size() && byte_at(text, i + 1) >= 0x40;
    return has_second ? 2 : 1;
}

/// A character of one or two bytes as UTF-8, "?" if it cannot be told. ASCII is itself, whatever the converter makes of
/// backslash and tilde.
std::string character_as_utf8(iconv_t converter, std::string character) {
    if (byte_at(character, 0) < 0x80)
        return character;
    char buffer[8];
    char* in = character.data();
    char* out = buffer;
    std::size_t in_left = character.size();
    std::size_t out_left = sizeof buffer;
    const bool converted = converter != nullptr && iconv(converter, &in, &in_left, &out, &out_left) == 0;
    return converted ? std::string(buffer, sizeof buffer - out_left) : "?";
}

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

std::string shift_jis_to_utf8(std::string_view text) {
    const Converter converter = open_converter();
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = shift_jis_length(text, i);
        result += character_as_utf8(converter.get(), std::string(text.substr(i, length)));
        i += length;
    }
    return result;
}

std::string_view cut_utf8(std::string_view text, std::size_t limit) {
    std::size_t end = std::min(limit, text.size());
    while (end > 0 && end < text.size() && (byte_at(text, end) & 0xC0U) == 0x80)
        --end;
    return text.substr(0, end);
}

std::string_view cut_shift_jis(std::string_view text, std::size_t limit) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t length = is_lead_byte(byte_at(text, end)) ? 2 : 1;
        if (end + length > std::min(limit, text.size()))
            break;
        end += length;
    }
    return text.substr(0, end);
}

} // namespace quillon
