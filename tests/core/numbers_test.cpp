// Conversions between doubles and decimal text. Where no tie decides, they give what the C library gives; ties, which
// go away from zero on 17 significant digits, stand in tables.
#include "core/numbers.h"

#include "tests/support/random_numbers.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <bit>
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

TEST(Round6, GivesTheNearestNumberWithSixDecimals) {
    const char* const rows = R"(
        1.0000001             1                     0.9999999             1                     1e-320           0
        0.1234561             0.123456              0.1234564             0.123456              0.1234565        0.123457
        0.0078125             0.007813              -0.0078125            -0.007813             0.0234375        0.023438
        0.50000001e-6         1e-6                  0.4999999e-6          0                     0.0000015        0.000002
        123456789012.1234567  123456789012.12346    4503599627370496.5    4503599627370496.5    0.30000000000000004  0.3
        1e100                 1e100                 -1e300                -1e300                -inf             -inf
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 2)
            EXPECT_EQ(round6(number(row[i])), number(row[i + 1])) << row[i];
    }
    EXPECT_TRUE(std::isnan(round6(NOT_A_NUMBER)));
}

TEST(Formats, ArePrintfWhereNoTieDecides) {
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

TEST(Formats, KnownCases) {
    // f, e or g, its precision, the number, the text.
    const char* const rows = R"(
        f  1   1.45      1.5              f  2   0.125     0.13           f  0   -2.5      -3         f  2   -0       0.00
        f  2   -0.001    -0.00            f  0   0.05      0              f  0   0.5       1          f  3   999.9996  1000.000
        e  3   0         0.000e+00        e  0   -0        0e+00          e  3   9.9999    1.000e+01  e  0   1e100    1e+100
        e  2   5e-324    4.94e-324        g  6   100000    100000         g  6   1000000   1e+06      g  6   999999.5  1e+06
        g  6   0.0001    0.0001           g  6   0.00001   1e-05          g  10  -1.50     -1.5       g  10  0        0
        g  6   0.000099999999    0.0001   g  10  9.9999999999e99  1e+100
        f  25  0.1       0.1000000000000000100000000           f  1   1e23      99999999999999992000000.0
        e  20  0.6666666666666666         6.66666666666666630000e-01
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 4) {
            const auto format = row[i] == "f" ? format_fixed : row[i] == "e" ? format_exponent : format_general;
            EXPECT_EQ(format(number(row[i + 2]), std::stoi(row[i + 1])).view(), row[i + 3]) << row[i + 2];
        }
    }
    EXPECT_EQ(format_fixed(1e300, 50).size(), 127U);
    EXPECT_EQ(format_exponent(1.0 / 3, 200).size(), 127U);
    EXPECT_LE(format_fixed(INFINITE, 3).size() + format_general(NOT_A_NUMBER, 9).size(), 20U);
}

TEST(ParseDecimal, ReadsWhatTheCLibraryReads) {
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
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
        ASSERT_EQ(used, static_cast<std::size_t>(end - text.c_str())) << text;
    }
}

TEST(ParseDecimal, KnownCases) {
    struct Row {
        const char* text;
        double value;
        std::size_t used;
    };
    // clang-format off
    const Row rows[] = {
        {"", 0, 0},         {"   ", 0, 0},      {"-", 0, 0},        {".", 0, 0},        {"e5", 0, 0},
        {"1e", 1, 1},       {"1e+", 1, 1},      {"1e-2", 0.01, 4},  {"+.5.", 0.5, 3},   {" \t-1.5e2x", -150, 8},
        {"0x10", 0, 1},     {"inf", 0, 0},      {"nan", 0, 0},      {"infinity", 0, 0}, {"1,5", 1, 1},
        {"1e400", INFINITE, 5},                 {"-1e400", -INFINITE, 6},               {"1e-400", 0, 6},
        {"1e99999999999999999999", INFINITE, 22},                   {"0e99999999999999999999", 0, 22},
        {"1e-99999999999999999999", 0, 23},     {"9007199254740993", 9007199254740992.0, 16},
        {"4.9e-324", 4.9e-324, 8},              {"2e-324", 0, 6},   {"1.7976931348623159e308", INFINITE, 22},
    };
    // clang-format on
    for (const Row& row : rows) {
        std::size_t used = 999;
        EXPECT_EQ(parse_decimal(row.text, used), row.value) << row.text;
        EXPECT_EQ(used, row.used) << row.text;
    }
    std::size_t used = 0;
    EXPECT_EQ(parse_decimal("0." + std::string(400, '0') + "1e401", used), 1);
    EXPECT_EQ(parse_decimal("1" + std::string(400, '0') + "e-400", used), 1);
    EXPECT_EQ(parse_decimal("9007199254740993." + std::string(300, '0') + "1", used), 9007199254740994.0);
}

TEST(Numbers, CompareToSixDecimals) {
    const char* const rows = R"(
        0   0.1234561  0.1234564       1.0000001  1         -1e-7  1e-7       0  -0       inf  inf      6e-7  14e-7
        -1  0.123456   0.123457        1          2         1e99   1e100      -inf  -1e300             1e15  1000000000000001
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 1; i < row.size(); i += 2) {
            EXPECT_EQ(compare_numbers(number(row[i]), number(row[i + 1])), std::stoi(row[0])) << row[i];
            EXPECT_EQ(compare_numbers(number(row[i + 1]), number(row[i])), -std::stoi(row[0])) << row[i];
        }
    }
    EXPECT_EQ(compare_numbers(NOT_A_NUMBER, 1) + compare_numbers(1, NOT_A_NUMBER), -2) << "never equal, never above";
}

TEST(Numbers, TruncateTowardZero) {
    const char* const rows = R"(
        1.9    1       2147483647.5    2147483647      2147483648     2147483647       1e300    2147483647    inf  2147483647
        -1.9   -1      -2147483648.9   -2147483648     -2147483649    -2147483648     -1e300   -2147483648    nan  0
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 2)
            EXPECT_EQ(std::to_string(truncate_to_int(number(row[i]))), row[i + 1]) << row[i];
    }
}

} // namespace
} // namespace quillon::testing
