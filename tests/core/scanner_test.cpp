// SPDX-License-Identifier: MIT
// The vocabulary and the slots of its table, and tokens of texts. Every text lies in a heap buffer of its
// exact size, so reading beyond its NUL fails the test.
#include "core/scanner.h"

#include "core/charset.h"
#include "core/keywords.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

namespace quillon::testing {
namespace {

constexpr const char* FAULTS[] = {"none", "unknown word", "bad number", "bad literal", "bad ampersand"};

/// The codes of all tokens up to the end or a fault, with blanks between them.
std::string codes_of(std::string_view text) {
    const ExactText line(text);
    std::string codes;
    const char* at = line.begin();
    for (;;) {
        const Token token = scan_token(at);
        codes += (codes.empty() ? "" : " ") + std::to_string(number_of(token.code));
        if (token.code == TOKEN_END || token.fault != ScanFault::NONE || codes.size() > 1000)
            return codes;
        EXPECT_GT(token.end, at) << text;
        at = token.end;
    }
}

/// "5 to 1", "'AB' to 4": the number or literal that a text begins with, and where it ends; or its fault.
std::string first_token(std::string_view text) {
    const ExactText line(text);
    const Token token = scan_token(line.begin());
    EXPECT_LE(token.end, line.end()) << text;
    EXPECT_LE(word_text(token).size(), 127U);
    EXPECT_EQ(token.code == TOKEN_LEXICAL_ERROR, token.fault != ScanFault::NONE) << text;
    if (token.fault != ScanFault::NONE)
        return FAULTS[static_cast<int>(token.fault)];
    EXPECT_TRUE(token.code == TOKEN_NUMBER || token.code == TOKEN_STRING) << text;
    TokenText literal;
    if (token.code == TOKEN_STRING)
        read_literal(token, literal);
    char number[32];
    std::snprintf(number, sizeof number, "%.17g", token.number);
    return (token.code == TOKEN_STRING ? "'" + escaped(literal) + "'" : number) + " to " +
           std::to_string(token.end - line.begin());
}

constexpr int SLOT_COUNT = 4500;

/// The slot of a word, by a hash of the test's own; negative for hashes from 2^31 on.
int slot_of(std::string_view word) {
    std::int64_t hash = 0;
    for (const char c : word)
        hash = (hash * 7 % 0x100000000) ^ as_byte(to_lower(c));
    return static_cast<int>((hash >= 0x80000000 ? hash - 0x100000000 : hash) % SLOT_COUNT);
}

std::string lower(std::string word) {
    std::transform(word.begin(), word.end(), word.begin(), to_lower);
    return word;
}

/// The code of a word in any letter case.
std::string code_of(const std::string& word) {
    std::string mixed = word;
    for (std::size_t i = 1; i < mixed.size(); i += 2)
        mixed[i] = to_lower(mixed[i]);
    const TokenCode code = lookup_keyword(word);
    EXPECT_EQ(lookup_keyword(lower(word)), code) << word;
    EXPECT_EQ(lookup_keyword(mixed), code) << word;
    return std::to_string(number_of(code));
}

TEST(Scanner, TokensOfTexts) {
    expect_cases("core/scanner.txt",
                 {{"the codes of its tokens", [](const FileCase& row) { return codes_of(row.input); }},
                  {"its first token", [](const FileCase& row) { return first_token(row.input); }}});
    EXPECT_EQ(codes_of("") + " " + codes_of(" \t\r") + " " + codes_of("A\nB"), "-1 -1 3 -1");
    EXPECT_EQ(codes_of("A\033B") + ", " + codes_of("A\rB") + ", " + codes_of("\"A\nB\""), "3 -1, 3 3 -1, 6 -1");
    EXPECT_EQ(codes_of("\207\215\234") + ", " + codes_of("\200\240\377"), "19 279 286 -1, 128 160 255 -1");
}

TEST(Scanner, LongTextsAndLineFeeds) {
    const std::string digits(126, '7');
    const std::string longest(127, 'x');
    const std::string literal = "\"" + longest;
    const std::string whole = "'" + longest + "' to ";
    const std::pair<std::string, std::string> rows[] = {
        {digits, "bad number"},
        {digits.substr(1), "7.7777777777777776e+124 to 125"},
        {digits.substr(1) + ".", "bad number"},
        {"." + digits.substr(2), "0.77777777777777779 to 125"},
        {std::string(100000, '1'), "bad number"},
        {"&H" + std::string(400, 'F'), "inf to 402"}, // no range here
        {longest, "unknown word"},
        {std::string(5000, 'A'), "unknown word"},
        {literal + "\";", whole + "129"},
        {literal + "\\pi\";", whole + "132"},
        {literal + "yz", whole + "130"},
        {"\"A\nB\"", "'A' to 2"},
        {"\"A b\tc\"", "'A b\tc' to 7"},
        {"\"\\\n", "'\\' to 2"},
        {"\"\\p\nA", "'\\' to 3"},
    };
    for (const auto& [text, token] : rows)
        EXPECT_EQ(first_token(text), token) << text;
}

TEST(Scanner, EveryPairOfBytesIsReadWithinItsText) {
    for (int first = 1; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const char text[] = {static_cast<char>(first), static_cast<char>(second), '\0'};
            const ExactText line(text);
            const char* at = line.begin();
            for (Token token = scan_token(at); token.code != TOKEN_END; token = scan_token(at)) {
                ASSERT_GT(token.end, at);
                ASSERT_LE(token.end, line.end());
                at = token.end;
            }
        }
    }
}

TEST(Keywords, HaveTheirCodesAndAnyOtherWordThatOfTheLastInItsSlot) {
    std::map<int, int> codes;
    std::map<std::string, int> words;
    for (const Keyword& keyword : vocabulary()) // in the order of registration
        codes[slot_of(std::string(keyword.spelling))] = words[lower(std::string(keyword.spelling))] =
            number_of(keyword.code);
    for (const Keyword& keyword : vocabulary())
        EXPECT_EQ(code_of(std::string(keyword.spelling)), std::to_string(number_of(keyword.code))) << keyword.spelling;
    std::map<int, int> strangers; // code -> how many words outside the vocabulary yield it
    int negative = 0;             // slots, which are empty
    for (const std::string prefix : {"", "abcdefgh"}) {
        for (int n = 0; n < 26 * 26 * 26 * 26; ++n) {
            std::string word = prefix;
            for (int rest = n, i = 0; i < 4; ++i, rest /= 26)
                word += static_cast<char>('a' + rest % 26);
            if (words.contains(word))
                continue;
            const int at = slot_of(word);
            const int expected = at < 0 || !codes.contains(at) ? 0 : codes[at];
            ASSERT_EQ(number_of(lookup_keyword(word)), expected) << word;
            ++strangers[expected];
            negative += at < 0 ? 1 : 0;
        }
    }
    EXPECT_GT(negative, 10000);
    EXPECT_GT(strangers[0], 0);
    EXPECT_GT(strangers[548], 0) << "the slot of SAVE_A and BEEPS";
    EXPECT_GT(strangers[533], 0) << "the slot of CLEAR and CLEAR_A";
    EXPECT_EQ(strangers[536] + strangers[532], 0);
}

} // namespace
} // namespace quillon::testing
