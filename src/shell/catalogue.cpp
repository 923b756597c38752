// SPDX-License-Identifier: MIT
// Reading the texts of a message catalogue.
#include "shell/catalogue.h"

#include "core/charset.h"
#include "shell/profile.h"
#include "shell/utf8.h"

#include <algorithm>

namespace quillon {
namespace {

/// The number of a key "M_000", -1 for any other key. Keys are looked up as written with three digits at least.
int key_number(std::string_view key) {
    constexpr std::size_t DIGITS_MAX = 6;
    if (key.size() < 5 || key.size() > 2 + DIGITS_MAX || !same_name(key.substr(0, 2), "M_"))
        return -1;
    int number = 0;
    for (const char c : key.substr(2)) {
        if (!is_digit(c))
            return -1;
        number = number * 10 + (c - '0');
    }
    const bool padded_too_far = key.size() > 5 && key[2] == '0';
    return padded_too_far ? -1 : number;
}

/// Sections are looked up in capitals, however the file writes them.
std::string section_key(std::string_view name) {
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(), to_upper);
    return key;
}

std::string with_line_breaks(std::string_view value) {
    std::string text;
    for (const char c : value) {
        if (c == '@')
            text += "\r\n";
        else
            text += c;
    }
    return text;
}

} // namespace

std::string utf8_message(std::string_view value) { return std::string(cut_utf8(value, MESSAGE_VALUE_MAX)); }

MessageCatalogue parse_catalogue(std::string_view text, MessageOfValue message_of_value) {
    MessageCatalogue catalogue;
    for (const ProfileSection& section : parse_profile(text).sections) {
        auto [place, is_first] = catalogue.sections.try_emplace(section_key(section.name));
        if (!is_first)
            continue; // of two sections of a name the first counts
        for (const ProfileEntry& entry : section.entries) {
            const int number = key_number(entry.key);
            if (number >= 0)
                place->second.try_emplace(number, with_line_breaks(message_of_value(entry.value)));
        }
    }
    return catalogue;
}

} // namespace quillon
