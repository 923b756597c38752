// UTF-8 checks, and the C library's conversion from Shift-JIS.
#include "shell/encoding.h"

#include <iconv.h>

#include <algorithm>

namespace quillon {
namespace {

constexpr unsigned byte_at(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

bool is_lead_byte(unsigned byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

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
    const iconv_t converter = iconv_open("UTF-8", "CP932");
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): its word for an error
        return std::string(text.size(), '?');
    std::string source(text);
    char* in = source.data();
    std::size_t in_left = source.size();
    std::string result;
    while (in_left > 0) {
        char buffer[512];
        char* out = buffer;
        std::size_t out_left = sizeof buffer;
        const std::size_t before = in_left;
        const std::size_t outcome = iconv(converter, &in, &in_left, &out, &out_left);
        result.append(buffer, sizeof buffer - out_left);
        if (outcome == static_cast<std::size_t>(-1) && (before == in_left || out_left > 16)) {
            result += '?'; // not "no room": a byte that does not belong here
            ++in;
            --in_left;
        }
    }
    iconv_close(converter);
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
