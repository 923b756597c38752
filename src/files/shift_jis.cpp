// SPDX-License-Identifier: MIT
// The C library's conversion from Shift-JIS, character by character.
#include "files/shift_jis.h"

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
