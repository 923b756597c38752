// SPDX-License-Identifier: MIT
// Words, numbers and bytes of a protocol line.
#include "session/line_reader.h"

#include <charconv>

namespace quillon {

std::string_view LineReader::rest() {
    std::string_view text = rest_;
    rest_ = {};
    if (!text.empty())
        text.remove_prefix(1); // the blank
    return text;
}

std::string_view LineReader::word() {
    const std::string_view text = rest();
    const std::size_t end = text.find(' ');
    if (end == std::string_view::npos)
        return text;
    rest_ = text.substr(end);
    return text.substr(0, end);
}

std::optional<long long> LineReader::number(long long lowest, long long highest) {
    return parse_number(word(), lowest, highest);
}

std::optional<std::string> parse_hexadecimal(std::string_view digits, std::size_t fewest, std::size_t most) {
    if (digits.size() % 2 != 0 || digits.size() < 2 * fewest || digits.size() > 2 * most)
        return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned byte = 0;
        const char* pair = digits.data() + i;
        const auto [end, error] = std::from_chars(pair, pair + 2, byte, 16);
        if (error != std::errc() || end != pair + 2)
            return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::optional<long long> parse_number(std::string_view text, long long lowest, long long highest) {
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

std::string number_refusal(std::string_view what, long long lowest, long long highest) {
    return std::string(what) + " must be a whole number from " + std::to_string(lowest) + " to " +
           std::to_string(highest) + ".";
}

std::string hexadecimal(std::string_view bytes) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += DIGITS[byte >> 4];
        text += DIGITS[byte & 15U];
    }
    return text;
}

} // namespace quillon
