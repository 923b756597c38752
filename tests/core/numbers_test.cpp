// SPDX-License-Identifier: MIT
// Conversions between doubles and decimal text. Where no tie decides, they give what the C library gives; ties, which
// go away from zero on 17 significant digits, stand in a table.
#include "core/numbers.h"

#include "tests/support/cases_file.h"
#include "tests/support/random_numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

namespace quillon::testing {
namespace {

std::string printed(const char* format, int precision, double x) {
    char text[1024];
    std::snprintf(text, sizeof text, format, precision, x);
    return text;
}

double number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

/// What is expected when it is the same number, otherwise the number in full.
std::string rounded(const FileCase& row) {
    const double x = round6(number(row.input));
    return x == number(row.expected) ? row.expected : printed("%.*g", 17, x);
}

/// "f2 0.125".
std::string formatted(const FileCase& row) {
    const auto format = row.input[0] == 'f' ? format_fixed : row.input[0] == 'e' ? format_exponent : format_general;
    const double x = number(row.input.substr(row.input.find(' ')));
    return std::string(format(x, std::stoi(row.input.substr(1))).view());
}

/// "1 2", in this order and in the other.
std::string compared(const FileCase& row) {
    const double a = number(row.input);
    const double b = number(row.input.substr(row.input.find(' ')));
    EXPECT_EQ(compare_numbers(b, a), -compare_numbers(a, b));
    return std::to_string(compare_numbers(a, b));
}

std::string truncated(const FileCase& row) { return std::to_string(truncate_to_int(number(row.input))); }

std::string read(const std::string& text) {
    std::size_t used = 999;
    const double value = parse_decimal(text, used);
    return printed("%.*g", 17, value) + " to " + std::to_string(used);
}

TEST(Numbers, KnownCases) {
    expect_cases("core/numbers.txt", {{"to six decimals", rounded},
                                      {"as text", formatted},
                                      {"compared with another", compared},
                                      {"truncated", truncated},
                                      {"read", [](const FileCase& row) { return read(row.input); }}});
    EXPECT_TRUE(std::isnan(round6(NOT_A_NUMBER)));
    EXPECT_EQ(compare_numbers(NOT_A_NUMBER, 1) + compare_numbers(1, NOT_A_NUMBER), -2) << "never equal, never above";
    EXPECT_EQ(format_fixed(1e300, 50).size(), 127U);
    EXPECT_EQ(format_exponent(1.0 / 3, 200).size(), 127U);
    EXPECT_LE(format_fixed(INFINITE, 3).size() + format_general(NOT_A_NUMBER, 9).size(), 20U);
    EXPECT_EQ(read("") + ", " + read("   ") + ", " + read(" \t-1.5e2x"), "0 to 0, 0 to 0, -150 to 8");
    EXPECT_EQ(read("0." + std::string(400, '0') + "1e401"), "1 to 407");
    EXPECT_EQ(read("1" + std::string(400, '0') + "e-400"), "1 to 406");
    EXPECT_EQ(read("9007199254740993." + std::string(300, '0') + "1"), "9007199254740994 to 318");
}

TEST(Numbers, ArePrintedAsTheCLibraryDoesWhereNoTieDecides) {
    RandomNumbers numbers;
    for (int i = 0; i < 30000; ++i) {
        const double x = i % 3 == 0 ? numbers.any() : numbers.decimal(i % 25 - 8, 17);
        const std::string digits = printed("%.*e", 16, x).substr(0, x < 0 ? 19 : 18);
        if (digits[digits.find_last_not_of('0')] == '5')
            continue;
        const int precision = 1 + i % 15;
        if (std::fabs(x) < 1e9) {
            ASSERT_EQ(round6(x), number(printed("%.*f", 6, x))) << printed("%.*e", 20, x);
        }
        ASSERT_EQ(format_exponent(x, precision).view(), printed("%.*e", precision, x));
        ASSERT_EQ(format_general(x, precision).view(), printed("%.*g", precision, x));
        if (std::fabs(x) < 1e10) {
            ASSERT_EQ(format_fixed(x, i % 6).view(), printed("%.*f", i % 6, x));
        }
    }
}

TEST(Numbers, AreReadAsTheCLibraryDoes) {
    const std::string alphabet = "0123456789012345678900...eE+- 5x";
    RandomNumbers numbers;
    for (int i = 0; i < 300000; ++i) {
        std::string text;
        const int length = i % 100 == 0 ? 60 : 12;
        for (int n = numbers.below(length); n >= 0; --n)
            text += alphabet[static_cast<std::size_t>(numbers.below(static_cast<int>(alphabet.size())))];
        if (text.find('x') != std::string::npos && text[text.find('x') - (text[0] == 'x' ? 0 : 1)] == '0')
            continue; // hexadecimal for the C library
        char* end = nullptr;
        const double expected = std::strtod(text.c_str(), &end);
        std::size_t used = 999;
        const double value = parse_decimal(text, used);
        ASSERT_EQ(bits_of(value), bits_of(expected)) << text;
        ASSERT_EQ(used, static_cast<std::size_t>(end - text.c_str())) << text;
    }
}

} // namespace
} // namespace quillon::testing
