// The order of strings.
#include "core/collation.h"

#include "core/charset.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::testing {
namespace {

// All printable characters as they sort, special ones as escapes; those in braces are equal.
constexpr const char* ORDER =
    " +-*/{\\ua}!{\"}#$>{\\ge}={\\le}<{\\ne}0123456789.{\\pi}{\\em}{\\ex}ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    "abcdefghijklmnopqrstuvwxyz";
constexpr const char* ORDER_BEHIND_LETTERS =
    "?,;:{\\ci}{\\sg}{\\dg}{\\tr}@{\\cr}{\\dv}{\\sp\\s2}{\\la}{\\ht\\h2}{\\di}{\\cl\\c2}{\\mu}{\\om}{\\da}{\\ra\\d2}%{\\\\}"
    "{\\sq}[&{_\\cs}{'`}{\\dt}]{\\bx}{\\bs})(";

using Group = std::string; ///< characters that are equal

std::vector<Group> groups_of(const char* order) {
    std::vector<Group> groups;
    bool inside = false;
    for (const char* at = order; *at != '\0';) {
        if (*at == '{' || *at == '}') {
            inside = *at++ == '{';
            if (inside)
                groups.emplace_back();
            continue;
        }
        if (!inside)
            groups.emplace_back();
        groups.back() += static_cast<char>(read_char(at));
    }
    return groups;
}

std::vector<Group> all_groups() {
    std::vector<Group> groups = groups_of(ORDER);
    for (const char c : std::string("{|}~\x7F"))
        groups.emplace_back(1, c);
    for (const Group& group : groups_of(ORDER_BEHIND_LETTERS))
        groups.push_back(group);
    return groups;
}

int sign(int x) { return (x > 0) - (x < 0); }

TEST(Collation, OrdersTheCharacterSet) {
    const std::vector<Group> groups = all_groups();
    std::size_t characters = 0;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        characters += groups[i].size();
        for (const char a : groups[i])
            for (std::size_t j = 0; j < groups.size(); ++j)
                for (const char b : groups[j])
                    ASSERT_EQ(sign(compare_strings({&a, 1}, {&b, 1})), (i > j) - (i < j))
                        << int{as_byte(a)} << " " << int{as_byte(b)};
    }
    EXPECT_EQ(characters, 128U - 2U) << "all from 0x20 to 0x9F but the two without a glyph";
}

TEST(Collation, ComparesStrings) {
    struct Row {
        std::string a, b;
        int result;
    };
    const std::string longest(126, 'A');
    // clang-format off
    const Row rows[] = {
        {"", "", 0},      {"", " ", -1},     {"ABC", "ABD", -1}, {"AB", "ABC", -1},  {"B", "AB", 1},
        {"A'", "A`", 0},  {"_", "\x80", 0},  {longest, longest, 0},                  {longest + "A", longest + "B", -1},
        {longest, longest.substr(1), 1},
    };
    // clang-format on
    for (const Row& row : rows) {
        const ExactText a(row.a);
        const ExactText b(row.b);
        EXPECT_EQ(sign(compare_strings({a.begin(), row.a.size()}, {b.begin(), row.b.size()})), row.result)
            << row.a << " " << row.b;
        EXPECT_EQ(sign(compare_strings(row.b, row.a)), -row.result) << row.b << " " << row.a;
    }
}

} // namespace
} // namespace quillon::testing
