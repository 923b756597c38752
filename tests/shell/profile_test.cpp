// Profile files: sections, keys, values, and what is none of them.
#include "shell/profile.h"

#include <gtest/gtest.h>

#include <climits>

namespace quillon::testing {
namespace {

/// The value that a profile gives a key of section [QZS], "(none)" where it does not.
std::string value_in(std::string_view text, std::string_view key) {
    const Profile profile = parse_profile(text);
    const ProfileSection* section = find_section(profile, "QZS");
    const std::string* value = section == nullptr ? nullptr : find_value(*section, key);
    return value == nullptr ? "(none)" : *value;
}

TEST(Profile, FindsValues) {
    struct Row {
        const char* text;
        const char* value; ///< of KEY
    };
    const Row rows[] = {
        {"[QZS]\nKEY=5\n", "5"},
        {"[QZS]\r\nKEY=5\r\n", "5"},
        {"[QZS]\nKEY=5", "5"},
        {"  [ QZS ] tail\n\t KEY \t=\t 5 6 \t\r\n", "5 6"},
        {"[qzs]\nkey=5\n", "5"},
        {"[QZS]\nKey=5=6\n", "5=6"},
        {"[QZS]\nKEY=\n", ""},
        {"\xEF\xBB\xBF[QZS]\nKEY=5\n", "5"},
        // quotes around the whole value are no part of it
        {"[QZS]\nKEY=\"a b\"\n", "a b"},
        {"[QZS]\nKEY=\"  a  \"  \n", "  a  "},
        {"[QZS]\nKEY=\"\"\n", ""},
        {"[QZS]\nKEY=\"\n", R"(")"},
        {"[QZS]\nKEY=\"a\n", R"("a)"},
        {"[QZS]\nKEY=a \"b\"\n", R"(a "b")"},
        {"[QZS]\nKEY=\"\"a\"\"\n", R"("a")"},
        // the first one counts, of sections and of keys
        {"[QZS]\nKEY=1\nKEY=2\n", "1"},
        {"[QZS]\nKEY=\nKEY=2\n", ""},
        {"[QZS]\nKEY=1\n[X]\nKEY=3\n[QZS]\nKEY=2\n", "1"},
        {"[QZS]\nA=1\n[QZS]\nKEY=2\n", "(none)"},
        // no value
        {"", "(none)"},
        {"KEY=5\n[QZS]\n", "(none)"},
        {"[X]\nKEY=5\n", "(none)"},
        {"[QZS]\n;KEY=5\n  ; KEY=5\n", "(none)"},
        {"[QZS]\nKEY\nKEYS=5\nKE=5\n=5\n", "(none)"},
        {"[", "(none)"},
        {"[]\nKEY=5\n", "(none)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(value_in(row.text, "KEY"), row.value);
    }
}

TEST(Profile, KeepsOrderAndWholeLines) {
    const Profile profile = parse_profile("junk\n[A]\n x = \"1\" \r\nnothing\n[B]\n[A]\ny=2\n");
    ASSERT_EQ(profile.sections.size(), 3U);
    EXPECT_EQ(profile.sections[0].name, "A");
    ASSERT_EQ(profile.sections[0].entries.size(), 1U);
    EXPECT_EQ(profile.sections[0].entries[0].key, "x");
    EXPECT_EQ(profile.sections[0].entries[0].value, "1");
    EXPECT_EQ(profile.sections[0].entries[0].line, R"(x = "1")");
    EXPECT_TRUE(profile.sections[1].entries.empty());
    EXPECT_EQ(profile.sections[2].name, "A");
}

TEST(Profile, ReadsIntegers) {
    const std::pair<const char*, int> rows[] = {
        {"5", 5},
        {"-12", -12},
        {"+7", 7},
        {"  30  ", 30},
        {"12abc", 12},
        {"3.9", 3},
        {"", 0},
        {"abc", 0},
        {"-", 0},
        {"- 5", 0},
        {"007", 7},
        {"0x1F", 31},
        {"0x", 0},
        {"0xG", 0},
        {"1x5", 1},
        {"0X00b0C86e", 0xB0C86E},
        {"2147483647", INT_MAX},
        {"-2147483648", INT_MIN},
        {"99999999999999999999999", INT_MAX},
        {"-99999999999999999999999", INT_MIN},
    };
    for (const auto& [value, number] : rows)
        EXPECT_EQ(parse_profile_integer(value), number) << value;
}

} // namespace
} // namespace quillon::testing
