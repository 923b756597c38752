// SPDX-License-Identifier: MIT
// The reader of the files of cases: it passes over nothing.
#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

std::string refusal_of(std::string_view text) {
    try {
        return std::to_string(parse_cases(text, "x").size()) + " rows";
    } catch (const std::exception& refusal) {
        return std::string(refusal.what()).substr(0, 3);
    }
}

TEST(CasesFile, IsReadWholeOrRefused) {
    const auto rows = parse_cases("# a note\n\n== H || I\nA || B   =>  1 \\pi=>\n#1 =>\n", "x");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].heading + "/" + rows[0].input + "/" + rows[0].expected, "H\nI/A\nB/ 1 \\pi=>");
    EXPECT_EQ(rows[1].input + "/" + rows[1].expected + std::to_string(rows[1].line), "#1/5");
    const std::pair<const char*, const char*> refusals[] = {
        {"", "x:0"},
        {"# a\n\n", "x:2"},
        {"A =>1", "x:1"},
        {"A -> 1", "x:1"},
        {"\n A => 1", "x:2"},
        {" => 1", "x:1"},
        {"A => 1 ", "x:1"},
        {"A => 1 => 2", "x:1"},
        {"A => 1 =>", "x:1"},
        {"==\nA => 1", "x:1"},
        {"==  \nA => 1", "x:1"},
        {"== H\n", "x:1"},
        {"== H\n== I\nA => 1", "x:2"},
        {"A => 1\n== H", "x:2"},
        {"A => 1", "1 rows"},
        {"A | B => 1 ;; C =>  2", "3 rows"},
        {"A => 1 ;; C", "x:1"},
    };
    for (const auto& [text, refusal] : refusals)
        EXPECT_EQ(refusal_of(text), refusal) << text;
}

} // namespace
} // namespace quillon::testing
