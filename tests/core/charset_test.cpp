// SPDX-License-Identifier: MIT
// Escapes of special characters, how the character set looks outside the machine, and how strings are ordered.
#include "core/charset.h"

#include "core/collation.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

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

std::string escaped_byte(int byte) {
    char out[8];
    return escape_text(std::string(1, static_cast<char>(byte)), out, sizeof out);
}

// The escapes from byte 0x80 on and how each looks outside the machine; there are none for 0x99 and 0x9A.
constexpr const char* ESCAPES = "cslenegeladarapicisqtrcrdvexdtdgsphtdiclbxsgommubs....h2emc2s2d2";
constexpr const char* LOOKS[] = {"_", "≤", "≠", "≥", "←", "↓", "→", "π", "○",  "□", "△", "×", "÷",  "ᴇ", "·", "°",
                                 "♠", "♥", "♦", "♣", "█", "Σ", "Ω", "μ", "\\", " ", " ", "♡", "ᴇ-", "♧", "♤", "♢"};

TEST(Charset, HasEscapesInAnyLetterCaseThatComeBack) {
    for (int byte = 0x80; byte < 0xA0; ++byte) {
        const char a = ESCAPES[2 * (byte - 0x80)], b = ESCAPES[2 * (byte - 0x80) + 1];
        const std::string escape{'\\', a, b};
        EXPECT_EQ(escaped_byte(byte), a == '.' ? "?" : escape);
        if (a == '.')
            continue;
        EXPECT_EQ(escape_letters(static_cast<unsigned char>(byte)), escape.substr(1));
        for (const std::string& text : {escape + "x", std::string{'\\', to_upper(a), b, 'x'},
                                        std::string{'\\', a, to_upper(b)}, std::string{'\\', to_upper(a), to_upper(b)}})
            EXPECT_EQ(read_first(text), std::pair(byte, 3)) << text;
    }
    const std::tuple<const char*, int, int> others[] = {
        // the byte (0xFF is no escape), and how many bytes it takes
        {"A", 0x41, 1},    {"\\ua", 0x5E, 3},   {"\\\\pi", 0x5C, 2}, {"\\\"", 0x22, 2}, {"\\", 0x5C, 1},
        {"\\p", 0x5C, 2},  {"\\p\"x", 0x5C, 3}, {"\\99", 0xFF, 2},   {"\\9a", 0xFF, 2}, {"\\ pi", 0xFF, 2},
        {"\\\n", 0x5C, 1}, {"\\p\n", 0x5C, 2},  {"\xFF", 0xFF, 1}};
    for (const auto& [text, byte, length] : others)
        EXPECT_EQ(read_first(text), std::pair(byte, length)) << text;
    EXPECT_EQ(read_first("").second + read_first("\nA").second, 0);
}

TEST(Charset, LooksAsTheFontDraws) {
    std::string all, looks;
    for (int byte = 0; byte < 256; ++byte) {
        const bool printable = byte >= 0x20 && byte < 0x7F && byte != '\\' && byte != '^';
        const std::string look = printable                     ? std::string(1, static_cast<char>(byte))
                                 : byte == '\\'                ? "¥"
                                 : byte == '^'                 ? "↑"
                                 : byte == 0x7F                ? "◀"
                                 : byte >= 0x80 && byte < 0xA0 ? LOOKS[byte - 0x80]
                                                               : "█";
        EXPECT_EQ(unicode_of(static_cast<unsigned char>(byte)), look) << byte;
        all += static_cast<char>(byte);
        looks += look;
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
