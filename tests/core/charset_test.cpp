// SPDX-License-Identifier: MIT
// Escapes of special characters, how the character set looks outside the machine, and how strings are ordered.
#include "core/charset.h"

#include "core/collation.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

namespace quillon::testing {
namespace {

/// What `read_char` yields for the first character of a text, and how many bytes it passes.
std::pair<int, int> read_first(std::string_view text) {
    const ExactText line(text);
    const char* at = line.begin();
    const int byte = read_char(at);
    return {byte, static_cast<int>(at - line.begin())};
}

/// The same as "5c 2".
std::string first_character(std::string_view text) {
    const auto [byte, passed] = read_first(text);
    char shown[16];
    std::snprintf(shown, sizeof shown, "%02x %d", byte, passed);
    return shown;
}

std::string escaped_byte(int byte) {
    char out[8];
    return escape_text(std::string(1, static_cast<char>(byte)), out, sizeof out);
}

/// "87 π": what an escape stands for, in any letter case.
std::string meaning_of(const std::string& escape) {
    const int byte = read_first(escape).first;
    const char a = escape[1];
    const char b = escape[2];
    for (const std::string& text : {std::string{'\\', a, b, 'x'}, std::string{'\\', to_upper(a), b, 'x'},
                                    std::string{'\\', a, to_upper(b)}, std::string{'\\', to_upper(a), to_upper(b)}})
        EXPECT_EQ(read_first(text), std::pair(byte, 3)) << text;
    if (byte >= 0x80) { // the others show as they are
        EXPECT_EQ(escape_letters(static_cast<unsigned char>(byte)), escape.substr(1));
        EXPECT_EQ(escaped_byte(byte), escape);
    }
    char hex[8];
    std::snprintf(hex, sizeof hex, "%02x ", byte);
    return hex + std::string(unicode_of(static_cast<unsigned char>(byte)));
}

TEST(Charset, HasEscapesAndTheLooksOfTheFont) {
    std::string all;
    std::string looks;
    std::string special;
    expect_cases("core/charset.txt",
                 {{"a first character", [](const FileCase& row) { return first_character(row.input); }},
                  {"an escape", [&special](const FileCase& row) {
                       special += static_cast<char>(read_first(row.input).first);
                       return meaning_of(row.input);
                   }}});
    EXPECT_EQ(first_character("\xFF") + first_character("\\\n") + first_character("\\p\n"), "ff 15c 15c 2");
    EXPECT_EQ(read_first("").second + read_first("\nA").second, 0);
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        all += c;
        looks += unicode_of(as_byte(c));
        if (special.find(c) != std::string::npos)
            continue;
        if (byte >= 0x80) {
            EXPECT_EQ(escaped_byte(byte), "?") << byte;
        }
        const bool printable = byte >= 0x20 && byte < 0x7F;
        const bool blank = byte == 0x99 || byte == 0x9A;
        const char* const other = c == '\\' ? "¥" : byte == 0x7F ? "◀" : blank ? " " : "█";
        const std::string look = printable && c != '\\' ? std::string(1, c) : other;
        EXPECT_EQ(unicode_of(as_byte(c)), look) << byte;
    }
    EXPECT_EQ(to_unicode(all), looks);
}

TEST(Charset, EscapedTextsHoldWholeEscapesOnly) {
    const char* const by_size[] = {"", "", "A", "A", "A", "A\\pi", "A\\piB", "A\\piB", "A\\piB"};
    for (std::size_t size = 1; size < std::size(by_size); ++size) {
        const std::unique_ptr<char[]> out = std::make_unique<char[]>(size);
        EXPECT_STREQ(escape_text("A\207B", out.get(), size), by_size[size]) << size;
    }
}

// All printable characters as they sort, behind the blank, special ones as escapes; those between two blanks are equal.
constexpr const char* ORDER =
    "+ - * / \\ua ! \" # $ > \\ge = \\le < \\ne 0 1 2 3 4 5 6 7 8 9 . \\pi \\em \\ex A B C D E F G H I J K L M N O P Q "
    "R S T U V W X Y Z a b c d e f g h i j k l m n o p q r s t u v w x y z { | } ~ \x7F ? , ; : \\ci \\sg \\dg \\tr @ "
    "\\cr \\dv \\sp\\s2 \\la \\ht\\h2 \\di \\cl\\c2 \\mu \\om \\da \\ra\\d2 % \\\\ \\sq [ & _\\cs '` \\dt ] \\bx \\bs ) (";

int sign(int x) { return (x > 0) - (x < 0); }

TEST(Collation, OrdersTheCharacterSet) {
    std::vector<std::pair<char, int>> characters = {{' ', 0}}; // and the place of each
    int place = 1;
    for (const char* at = ORDER; *at != '\0';) {
        const char c = static_cast<char>(read_char(at));
        if (c == ' ')
            ++place;
        else
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
    const std::string longest(126, 'A');
    const std::tuple<std::string, std::string, int> rows[] = {
        {"", "", 0},
        {"", " ", -1},
        {"A'", "A`", 0},
        {"_", "\x80", 0},
        {"AB", "ABC", -1},
        {"B", "AB", 1},
        {longest, longest, 0},
        {longest + "A", longest + "B", -1},
        {longest, longest.substr(1), 1},
    };
    for (const auto& [first, second, result] : rows) {
        const ExactText a(first);
        const ExactText b(second);
        EXPECT_EQ(sign(compare_strings({a.begin(), first.size()}, {b.begin(), second.size()})), result)
            << first << " " << second;
        EXPECT_EQ(sign(compare_strings(second, first)), -result) << second << " " << first;
    }
}

} // namespace
} // namespace quillon::testing
