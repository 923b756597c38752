// SPDX-License-Identifier: MIT
// Profile files: sections in brackets, and in them keys with values. Settings and message catalogues are such files.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A line of a section that gives a key a value.
struct ProfileEntry {
    std::string key;
    std::string value; ///< without blanks and double quotes around it
    std::string line;  ///< the line as it stands in the file
};

struct ProfileSection {
    std::string name;
    std::vector<ProfileEntry> entries;
    std::string text; ///< the section as it stands in the file, the line of its name and all other lines included
};

/// A profile in file order. Lines that are neither a section's name nor a key with "=" make no entries.
struct Profile {
    std::string head; ///< what stands before the first section
    std::vector<ProfileSection> sections;
};

/// Reads a profile. Any bytes will do: what is no profile yields no sections.
Profile parse_profile(std::string_view text);

/// What ends the lines of a profile: LF, or CR in one that has no LF.
char profile_line_end(std::string_view text);

/// Reads one line of a section; nothing when it gives no key a value: a section's name, a remark (";"), no "=".
std::optional<ProfileEntry> parse_profile_entry(std::string_view line);

/// A line without the blanks around it, its line end included.
std::string_view without_blanks(std::string_view line);

/// Whether two names are the same; letters of either case count as equal.
bool same_name(std::string_view a, std::string_view b);

/// The first section of this name, null when there is none.
const ProfileSection* find_section(const Profile& profile, std::string_view name);

/// The first value of a key, null when there is none.
const std::string* find_value(const ProfileSection& section, std::string_view key);

/// The whole number at the start of a value: an optional sign and decimal digits, or hexadecimal ones behind "0x"; 0
/// where there is none, the nearest end beyond the range of 32 bits. Hexadecimal digits without a "-" are the bits of
/// the number: 0xFFFFFFFF is -1.
int parse_profile_integer(std::string_view value);

} // namespace quillon
