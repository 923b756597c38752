// Profile files: sections, keys, values, and what is none of them (profile.txt).
#include "shell/profile.h"

#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

std::string value_of_key(std::string_view text) {
    const Profile profile = parse_profile(text);
    const ProfileSection* section = find_section(profile, "QZS");
    const std::string* value = section == nullptr ? nullptr : find_value(*section, "KEY");
    return value == nullptr ? "none" : "|" + *value + "|";
}

TEST(Profile, FindsValues) {
    expect_cases("shell/profile.txt",
                 {{"values", [](const FileCase& row) { return value_of_key(row.input); }},
                  {"integers", [](const FileCase& row) { return std::to_string(parse_profile_integer(row.input)); }}});
    EXPECT_EQ(parse_profile_integer("  30  "), 30);
    EXPECT_EQ(parse_profile_integer(""), 0);
    EXPECT_EQ(value_of_key("  [ QZS ] tail\r\n\t KEY \t=\t 5 6 \t\r\n"), "|5 6|");
    EXPECT_EQ(value_of_key("\xEF\xBB\xBF[QZS]\nKEY=5\n"), "|5|");
    EXPECT_EQ(value_of_key(""), "none");
}

TEST(Profile, KeepsOrderAndWholeLines) {
    const Profile profile = parse_profile("junk\n[A]\n x = \"1\" \r\nnothing\n[B]\n[A]\ny=2\n");
    std::string told;
    for (const ProfileSection& section : profile.sections) {
        told += section.name + ":";
        for (const ProfileEntry& entry : section.entries)
            told += entry.key + "," + entry.value + "," + entry.line + ";";
    }
    EXPECT_EQ(told, "A:x,1,x = \"1\";B:A:y,2,y=2;");
}

} // namespace
} // namespace quillon::testing
