// The order of strings.
#include "core/collation.h"

#include "core/charset.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::testing {
namespace {

// All printable characters as they sort, special ones as escapes; those between two blanks are equal.
constexpr const char* ORDER =
    "+ - * / \\ua ! \" # $ > \\ge = \\le < \\ne 0 1 2 3 4 5 6 7 8 9 . \\pi \\em \\ex A B C D E F G H I J K L M N O P Q "
    "R S T U V W X Y Z a b c d e f g h i j k l m n o p q r s t u v w x y z { | } ~ \x7F ? , ; : \\ci \\sg \\dg \\tr @ "
    "\\cr \\dv \\sp\\s2 \\la \\ht\\h2 \\di \\cl\\c2 \\mu \\om \\da \\ra\\d2 % \\\\ \\sq [ & _\\cs '` \\dt ] \\bx \\bs ) (";

/// The blank is the first; every other group of the order is a text of equal characters.
std::vector<std::string> groups_of_equals() {
    std::vector<std::string> groups = {" ", ""};
    for (const char* at = ORDER; *at != '\0';) {
        const char c = static_cast<char>(read_char(at));
        if (c == ' ')
            groups.emplace_back();
        else
            groups.back() += c;
    }
    return groups;
}

int sign(int x) { return (x > 0) - (x < 0); }

TEST(Collation, OrdersTheCharacterSet) {
    std::vector<std::pair<char, int>> characters; // and the place of each
    int place = 0;
    for (const std::string& group : groups_of_equals()) {
        ++place;
        for (const char c : group)
            characters.emplace_back(c, place);
    }
    for (const auto& [a, place_of_a] : characters) {
        for (const auto& [b, place_of_b] : characters)
            ASSERT_EQ(sign(compare_strings({&a, 1}, {&b, 1})), sign(place_of_a - place_of_b))
                << int{as_byte(a)} << " " << int{as_byte(b)};
    }
    EXPECT_EQ(characters.size(), 128U - 2U) << "all from 0x20 to 0x9F but the two without a glyph";
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
