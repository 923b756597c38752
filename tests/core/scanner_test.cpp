// Tokens of texts. Every text lies in a heap buffer of its exact size, so reading beyond its NUL fails the test.
#include "core/scanner.h"

#include "tests/support/evaluation.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace quillon::testing {
namespace {

/// The codes of all tokens up to the end, with blanks between them.
std::string codes_of(std::string_view text) {
    const ExactText line(text);
    std::string codes;
    const char* at = line.begin();
    for (;;) {
        const Token token = scan_token(at);
        codes += (codes.empty() ? "" : " ") + std::to_string(token.code);
        if (token.code == TOKEN_END || token.fault != ScanFault::NONE || codes.size() > 1000)
            return codes;
        EXPECT_GT(token.end, at) << text;
        at = token.end;
    }
}

TEST(Scanner, TokensOfTexts) {
    const char* const rows = R"(
        516 3 59 5 -1             print A;b$
        3 -2 3 -1                 A:B              A : B
        3 280 3 280 3 281 3 -1    A<>B!=C>=D
        3 282 3 283 3 -1          A<=B==C
        61 282 62 62 60 60 -1     =<=>><<
        62 61 61 33 -1            > = = !
        3 61 60 3 -1              A=<B
        3 61 62 3 -1              A=>B
        283 61 -1                 ===
        3 1 -1                    A1               A$B5
        1 3 -1                    &HFFG            5A
        3 -1                      A$B              z
        5 -1                      A$B$             A$$              a$
        5 5 -1                    $A$              $$
        5 40 1 41 -1              $(1)             A$(1)
        518 3 61 1 542 1 543 1 -1      FOR I=1TO9STEP2
        273 40 5 41 -1            MID$(A$)
        278 -11                   RAN# RAN
        -11                       FORI=1TO9        MID$MID          &                & H1     &G     "\zz"
        556 1 -1                  READ#1
        528 -1                    LIST_A
        95 3 -1                   _A
        279 286 19 14 -1          EX EM PI MOD
        43 45 42 47 94 40 41 -1   +-*/^()
        44 59 35 64 124 126 -1    ,;#@|~
        63 37 39 92 91 93 -1      ?%'\[]
        123 125 96 1 -1           {}`.
        6 59 6 -1                 "AB";""
        6 -1                      "A:B             "
        6 -2 3 -1                 "A\"B":C
        1 3 1 -1                  1E5
        1 -11                     1 2.5.A
        1 -1                      &h               5
    )";
    for (const Case& row : cases(rows))
        EXPECT_EQ(codes_of(row.text), row.outcome) << row.text;
    const std::pair<const char*, const char*> characters[] = {
        {"", "-1"},
        {" \t\r", "-1"},
        {"A\nB", "3 -1"},
        {"A\033B", "3 -1"},
        {"A\rB", "3 3 -1"},
        {"\"A\nB\"", "6 -1"},
        {"\207\215\234", "19 279 286 -1"},
        {"\200\240\377", "128 160 255 -1"},
    };
    for (const auto& [text, codes] : characters)
        EXPECT_EQ(codes_of(text), codes) << text;
}

TEST(Scanner, NumbersAndWhereTheyEnd) {
    // The text, the number, and how many characters it takes.
    const char* const rows = R"(
        5.         5      2        5.A     5      2        .5        0.5     2        .        0     1
        007        7      3        0.1     0.1    3        1.25E5    1.25    4        .A       0     1
        9 9        9      1        &HFF    255    4        &hAbZ     171     4        &H       0     2
        &H1.5      1      3        5;      5      1        00.50     0.5     5        1EX3     1     1
        12345678901234567890    12345678901234567000     20        9007199254740993    9007199254740992    16
        0.000000000000000000001    1e-21    23        &H100000000000000000000    1208925819614629174706176    23
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 3) {
            const ExactText line(row[i]);
            const Token token = scan_token(line.begin());
            EXPECT_EQ(token.code, TOKEN_NUMBER) << row[i];
            EXPECT_EQ(token.number, std::strtod(row[i + 1].c_str(), nullptr)) << row[i];
            EXPECT_EQ(token.end - line.begin(), std::atoi(row[i + 2].c_str())) << row[i];
        }
    }
}

TEST(Scanner, FaultsAndTheirKinds) {
    struct Row {
        std::string text;
        ScanFault fault;
    };
    const std::string digits(126, '7');
    // clang-format off
    const Row rows[] = {
        {"FOO", ScanFault::UNKNOWN_WORD},       {std::string(127, 'A'), ScanFault::UNKNOWN_WORD},
        {"1.5.2", ScanFault::BAD_NUMBER},       {std::string(5000, 'A'), ScanFault::UNKNOWN_WORD},
        {"..", ScanFault::BAD_NUMBER},          {digits, ScanFault::BAD_NUMBER},
        {digits.substr(1), ScanFault::NONE},    {digits.substr(1) + ".", ScanFault::BAD_NUMBER},
        {"\"\\zz\"", ScanFault::BAD_LITERAL},   {"." + digits.substr(2), ScanFault::NONE},
        {"\"\\ab", ScanFault::BAD_LITERAL},     {std::string(100000, '1'), ScanFault::BAD_NUMBER},
        {"&", ScanFault::BAD_AMPERSAND},        {"&H" + std::string(400, 'F'), ScanFault::NONE}, // infinite: no range here
    };
    // clang-format on
    for (const Row& row : rows) {
        const ExactText line(row.text);
        const Token token = scan_token(line.begin());
        EXPECT_EQ(token.fault, row.fault) << row.text;
        EXPECT_EQ(token.code, row.fault == ScanFault::NONE ? TOKEN_NUMBER : TOKEN_LEXICAL_ERROR) << row.text;
        EXPECT_LE(token.end, line.end()) << row.text;
        EXPECT_LE(word_text(token).size(), 127U);
    }
}

TEST(Scanner, LiteralsAndWhereTheyEnd) {
    struct Row {
        std::string text;
        std::string literal;
        std::size_t end;
    };
    const std::string longest(127, 'x');
    // clang-format off
    const Row rows[] = {
        {R"("AB")", "AB", 4},           {R"("")", "", 2},                   {R"("AB)", "AB", 3},
        {"\"A\nB\"", "A", 2},           {R"("A b	c")", "A b\tc", 7},        {R"("\pi\PI\Pi")", "\x87\x87\x87", 11},
        {R"("A\"B")", "A\"B", 6},       {R"("\\")", "\\", 4},              {R"("\\\\pi")", "\\\\pi", 8},
        {R"("\p";A)", "\\;A", 6},      {R"("\p)", "\\", 3},               {R"("\)", "\\", 2}, // the quote counts as a letter
        {"\"\\\n", "\\", 2},           {"\"\\p\nA", "\\", 3},            {"\"" + longest + "\";", longest, 129},
        {"\"" + longest + "yz\";", longest, 131},                          {"\"" + longest + "\\pi\";", longest, 132},
        {"\"" + longest + "yz", longest, 130},
    };
    // clang-format on
    for (const Row& row : rows) {
        const ExactText line(row.text);
        const Token token = scan_token(line.begin());
        EXPECT_EQ(token.code, TOKEN_STRING) << row.text;
        TokenText literal;
        read_literal(token, literal);
        EXPECT_EQ(literal.view(), row.literal) << row.text;
        EXPECT_EQ(static_cast<std::size_t>(token.end - line.begin()), row.end) << row.text;
    }
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

} // namespace
} // namespace quillon::testing
