// Reading profile files.
#include "shell/profile.h"

#include "core/charset.h"

#include <algorithm>
#include <limits>

namespace quillon {
namespace {

constexpr std::string_view BLANKS = " \t\r\v\f";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

std::string_view unquoted(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

void parse_line(Profile& profile, std::string_view line) {
    const std::string_view content = trimmed(line);
    if (content.empty() || content.front() == ';')
        return;
    if (content.front() == '[') {
        const std::string_view name = content.substr(1, content.find(']') - 1);
        profile.sections.push_back({std::string(trimmed(name)), {}});
        return;
    }
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos || profile.sections.empty())
        return;
    const std::string_view key = trimmed(content.substr(0, equals));
    const std::string_view value = unquoted(trimmed(content.substr(equals + 1)));
    profile.sections.back().entries.push_back({std::string(key), std::string(value), std::string(content)});
}

int digit_value(char c, int base) {
    const char lower = to_lower(c);
    const int digit = is_digit(c) ? c - '0' : (lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : base);
    return digit < base ? digit : -1;
}

} // namespace

Profile parse_profile(std::string_view text) {
    Profile profile;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        parse_line(profile, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return profile;
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
    std::string_view text = trimmed(value);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    const bool hexadecimal = text.size() > 1 && text[0] == '0' && to_lower(text[1]) == 'x';
    const int base = hexadecimal ? 16 : 10;
    if (hexadecimal)
        text.remove_prefix(2);
    constexpr long long LIMIT = std::numeric_limits<int>::max();
    long long number = 0;
    for (const char c : text) {
        const int digit = digit_value(c, base);
        if (digit < 0)
            break;
        number = std::min(number * base + digit, LIMIT + (negative ? 1 : 0));
    }
    return static_cast<int>(negative ? -number : number);
}

} // namespace quillon
