// SPDX-License-Identifier: MIT
// Reading profile files.
#include "shell/profile.h"

#include "core/charset.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace quillon {
namespace {

constexpr std::string_view BLANKS = " \t\r\n\v\f";
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

std::string_view unquoted(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

/// Begins a section where a line does so. Returns what follows its name on the line; all of any other line.
std::string_view take_section_name(Profile& profile, std::string_view line) {
    const std::string_view content = without_blanks(line);
    if (content.empty() || content.front() != '[')
        return line;
    const std::size_t end = content.find(']');
    profile.sections.push_back({std::string(without_blanks(content.substr(1, end - 1))), {}, {}});
    return end == std::string_view::npos ? std::string_view() : content.substr(end + 1);
}

void parse_line(Profile& profile, std::string_view line) {
    const std::string_view rest = take_section_name(profile, line);
    if (auto entry = profile.sections.empty() ? std::nullopt : parse_profile_entry(rest))
        profile.sections.back().entries.push_back(std::move(*entry));
    (profile.sections.empty() ? profile.head : profile.sections.back().text) += line;
}

int digit_value(char c, int base) {
    const char lower = to_lower(c);
    const int digit = is_digit(c) ? c - '0' : (lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : base);
    return digit < base ? digit : -1;
}

} // namespace

char profile_line_end(std::string_view text) { return text.find('\n') == std::string_view::npos ? '\r' : '\n'; }

Profile parse_profile(std::string_view text) {
    Profile profile;
    if (text.starts_with(BYTE_ORDER_MARK))
        text.remove_prefix(BYTE_ORDER_MARK.size());
    const char line_end = profile_line_end(text);
    while (!text.empty()) {
        const std::size_t size = std::min(text.find(line_end), text.size() - 1) + 1;
        parse_line(profile, text.substr(0, size));
        text.remove_prefix(size);
    }
    return profile;
}

std::optional<ProfileEntry> parse_profile_entry(std::string_view line) {
    const std::string_view content = without_blanks(line);
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos || content.front() == ';' || content.front() == '[')
        return std::nullopt;
    const std::string_view key = without_blanks(content.substr(0, equals));
    const std::string_view value = unquoted(without_blanks(content.substr(equals + 1)));
    return ProfileEntry{std::string(key), std::string(value), std::string(content)};
}

std::string_view without_blanks(std::string_view line) {
    const std::size_t first = line.find_first_not_of(BLANKS);
    if (first == std::string_view::npos)
        return {};
    return line.substr(first, line.find_last_not_of(BLANKS) - first + 1);
}

bool same_name(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return to_lower(x) == to_lower(y); });
}

const ProfileSection* find_section(const Profile& profile, std::string_view name) {
    const auto found = std::find_if(profile.sections.begin(), profile.sections.end(),
                                    [name](const ProfileSection& section) { return same_name(section.name, name); });
    return found == profile.sections.end() ? nullptr : &*found;
}

const std::string* find_value(const ProfileSection& section, std::string_view key) {
    const auto found = std::find_if(section.entries.begin(), section.entries.end(),
                                    [key](const ProfileEntry& entry) { return same_name(entry.key, key); });
    return found == section.entries.end() ? nullptr : &found->value;
}

int parse_profile_integer(std::string_view value) {
    std::string_view text = without_blanks(value);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    const bool hexadecimal = text.size() > 1 && text[0] == '0' && to_lower(text[1]) == 'x';
    const int base = hexadecimal ? 16 : 10;
    if (hexadecimal)
        text.remove_prefix(2);
    // Hexadecimal digits give all 32 bits, so that a colour written with eight of them keeps its last six.
    const long long limit = hexadecimal && !negative ? std::numeric_limits<std::uint32_t>::max()
                                                     : std::numeric_limits<int>::max() + (negative ? 1LL : 0LL);
    long long number = 0;
    for (const char c : text) {
        const int digit = digit_value(c, base);
        if (digit < 0)
            break;
        number = std::min(number * base + digit, limit);
    }
    return static_cast<int>(negative ? -number : number);
}

} // namespace quillon
