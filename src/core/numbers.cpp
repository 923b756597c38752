// SPDX-License-Identifier: MIT
// Conversions between doubles and decimal digits. The C library's correctly rounded conversions do the hard part, on
// texts without a decimal point, so that no locale shows.
#include "core/numbers.h"

#include "core/charset.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace quillon {
namespace {

constexpr int DIGIT_COUNT = 17;
constexpr std::uint64_t DIGITS_MIN = 10'000'000'000'000'000; // 10^16

// clang-format off
constexpr std::uint64_t POWERS_OF_TEN[] = {
    1,
    10,
    100,
    1'000,
    10'000,
    100'000,
    1'000'000,
    10'000'000,
    100'000'000,
    1'000'000'000,
    10'000'000'000,
    100'000'000'000,
    1'000'000'000'000,
    10'000'000'000'000,
    100'000'000'000'000,
    1'000'000'000'000'000,
    10'000'000'000'000'000,
    100'000'000'000'000'000,
};
// clang-format on

/// The whole part of a number from 0 on that fits 63 bits. Unlike `std::floor` it is no call on every processor.
double whole_part(double x) { return static_cast<double>(static_cast<std::int64_t>(x)); }

/// Whole numbers up to 2^53 have their digits at hand.
bool whole_to_decimal(double magnitude, Decimal& decimal) {
    constexpr double WHOLE_MAX = 9007199254740992.0;
    if (magnitude > WHOLE_MAX || magnitude != std::floor(magnitude))
        return false;
    const auto whole = static_cast<std::uint64_t>(magnitude);
    int exponent = 0;
    while (exponent < DIGIT_COUNT - 1 && POWERS_OF_TEN[exponent + 1] <= whole)
        ++exponent;
    decimal.digits = whole * POWERS_OF_TEN[DIGIT_COUNT - 1 - exponent];
    decimal.exponent = exponent;
    return true;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
using Wide = unsigned __int128;
#pragma GCC diagnostic pop

/// magnitude * 10^power to the nearest whole number, to the even one of two. The power (0-27) and the number are such
/// that the result has some 17 digits; the product is exact in 128 bits.
std::uint64_t scaled_by_ten(double magnitude, int power) {
    constexpr int MANTISSA_BITS = 53;
    int exponent = 0;
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(std::frexp(magnitude, &exponent), MANTISSA_BITS));
    std::uint64_t fives = 1; // 10^power is 5^power * 2^power
    for (int i = 0; i < power; ++i)
        fives *= 5;
    const Wide product = Wide{mantissa} * fives;
    const int shift = MANTISSA_BITS - exponent - power;
    if (shift <= 0)
        return static_cast<std::uint64_t>(product << -shift);
    const auto whole = static_cast<std::uint64_t>(product >> shift);
    const Wide rest = product & ((Wide{1} << shift) - 1);
    const Wide half = Wide{1} << (shift - 1);
    const bool up = rest > half || (rest == half && whole % 2 == 1);
    return whole + (up ? 1 : 0);
}

/// Numbers from 10^-10 to 10^16 scale to 17 digits within 128 bits, by the power for an exponent that is one too small
/// as well.
bool middling_to_decimal(double magnitude, Decimal& decimal) {
    if (!(magnitude >= 1e-10 && magnitude < 1e16))
        return false;
    constexpr double LOG10_OF_2 = 0.30102999566398120;
    decimal.exponent = static_cast<int>(std::floor(std::ilogb(magnitude) * LOG10_OF_2)); // right, or one too small
    decimal.digits = scaled_by_ten(magnitude, DIGIT_COUNT - 1 - decimal.exponent);
    if (decimal.digits >= DIGITS_MIN * 10)
        decimal.digits = scaled_by_ten(magnitude, DIGIT_COUNT - 1 - ++decimal.exponent);
    return true;
}

/// Appends `count` digits, that for 10^first_place first; 0 outside the 17 known ones.
void append_digits(NumberText& text, const Decimal& decimal, int first_place, int count) {
    char known[DIGIT_COUNT];
    std::uint64_t rest = decimal.digits;
    for (int i = DIGIT_COUNT - 1; i >= 0; --i, rest /= 10)
        known[i] = static_cast<char>('0' + rest % 10);
    for (int i = 0; i < count && text.size() < NumberText::capacity(); ++i) {
        const int index = decimal.exponent - first_place + i;
        text.push_back(index >= 0 && index < DIGIT_COUNT ? known[index] : '0');
    }
}

NumberText not_finite_text(double x) {
    if (std::isnan(x))
        return NumberText("nan");
    return NumberText(x < 0 ? "-inf" : "inf");
}

/// The exponent of a text: sign and at least two digits.
void append_exponent(NumberText& text, int exponent) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "e%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
    text.append(digits);
}

/// How many digits of a rounded decimal are left when its trailing zeros are dropped; at least 1.
int significant_count(const Decimal& decimal) {
    std::uint64_t digits = decimal.digits;
    int count = digits == 0 ? 1 : DIGIT_COUNT;
    while (count > 1 && digits % 10 == 0) {
        digits /= 10;
        --count;
    }
    return count;
}

NumberText write_fixed(const Decimal& decimal, int decimals) {
    NumberText text(decimal.negative ? "-" : "");
    const int first_place = decimal.exponent > 0 ? decimal.exponent : 0;
    append_digits(text, decimal, first_place, first_place + 1);
    if (decimals > 0) {
        text.push_back('.');
        append_digits(text, decimal, -1, decimals);
    }
    return text;
}

NumberText write_exponent(const Decimal& decimal, int decimals) {
    NumberText text(decimal.negative ? "-" : "");
    append_digits(text, decimal, decimal.exponent, 1);
    if (decimals > 0) {
        text.push_back('.');
        append_digits(text, decimal, decimal.exponent - 1, decimals);
    }
    append_exponent(text, decimal.exponent);
    return text;
}

/// Collects the digits of a number's text as an integer text with a power of ten, so that the C library need not
/// read a point. Zeros at the front are dropped; the caller's buffer bounds the digits kept.
struct DigitCollector {
    char digits[400];
    int count = 0;
    long exponent = 0;
    bool point_seen = false;
    bool any = false;

    void add(char digit) {
        any = true;
        const bool keep = count < 380 && !(count == 0 && digit == '0');
        if (keep)
            digits[count++] = digit;
        const bool dropped = !keep && count > 0;
        if (point_seen)
            exponent -= dropped ? 0 : 1;
        else
            exponent += dropped ? 1 : 0;
    }
};

double collected_value(DigitCollector& collector) {
    if (collector.count == 0)
        return 0.0;
    if (collector.count <= 17) {
        collector.digits[collector.count] = '\0';
        const bool in_range = collector.exponent > -100000 && collector.exponent < 100000;
        return from_decimal(std::strtoull(collector.digits, nullptr, 10),
                            in_range ? static_cast<int>(collector.exponent) : (collector.exponent < 0 ? -9999 : 9999));
    }
    std::snprintf(collector.digits + collector.count,
                  sizeof collector.digits - static_cast<std::size_t>(collector.count), "e%ld", collector.exponent);
    return std::strtod(collector.digits, nullptr);
}

/// Reads an exponent at `text[position]` ("e", optional sign, digits); leaves `position` when there is none.
long parse_exponent(std::string_view text, std::size_t& position) {
    std::size_t p = position;
    if (p >= text.size() || to_lower(text[p]) != 'e')
        return 0;
    ++p;
    const bool negative = p < text.size() && text[p] == '-';
    if (p < text.size() && (text[p] == '-' || text[p] == '+'))
        ++p;
    if (p >= text.size() || !is_digit(text[p]))
        return 0;
    long exponent = 0;
    for (; p < text.size() && is_digit(text[p]); ++p)
        exponent = exponent < 1'000'000 ? exponent * 10 + (text[p] - '0') : exponent;
    position = p;
    return negative ? -exponent : exponent;
}

} // namespace

Decimal to_decimal(double x) {
    Decimal decimal{x < 0, 0, 0};
    const double magnitude = std::fabs(x);
    if (magnitude == 0 || whole_to_decimal(magnitude, decimal) || middling_to_decimal(magnitude, decimal))
        return decimal;
    return to_decimal_by_text(x);
}

Decimal to_decimal_by_text(double x) {
    Decimal decimal{x < 0, 0, 0};
    const double magnitude = std::fabs(x);
    if (magnitude == 0)
        return decimal;
    char text[40];
    std::snprintf(text, sizeof text, "%.16e", magnitude);
    const char* p = text;
    for (; *p != 'e'; ++p) { // whatever is no digit is the locale's decimal point
        if (is_digit(*p))
            decimal.digits = decimal.digits * 10 + static_cast<std::uint64_t>(*p - '0');
    }
    decimal.exponent = std::atoi(p + 1);
    return decimal;
}

Decimal round_significant(Decimal decimal, int count) {
    if (count >= DIGIT_COUNT || decimal.digits == 0)
        return decimal;
    if (count < 0) {
        decimal.digits = 0;
        decimal.exponent = 0;
        return decimal;
    }
    const std::uint64_t unit = POWERS_OF_TEN[DIGIT_COUNT - count];
    decimal.digits = (decimal.digits + unit / 2) / unit * unit;
    if (decimal.digits >= DIGITS_MIN * 10) {
        decimal.digits /= 10;
        ++decimal.exponent;
    }
    if (decimal.digits == 0)
        decimal.exponent = 0;
    return decimal;
}

double from_decimal(std::uint64_t significand, int exponent) {
    // Both operands exact: one correctly rounded operation.
    constexpr double EXACT_POWERS[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                       1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int EXACT_MAX = 22;
    if (significand < (std::uint64_t{1} << 53) && exponent >= -EXACT_MAX && exponent <= EXACT_MAX) {
        const auto value = static_cast<double>(significand);
        return exponent < 0 ? value / EXACT_POWERS[-exponent] : value * EXACT_POWERS[exponent];
    }
    char text[40];
    std::snprintf(text, sizeof text, "%llue%d", static_cast<unsigned long long>(significand), exponent);
    return std::strtod(text, nullptr);
}

double parse_decimal(std::string_view text, std::size_t& used) {
    std::size_t p = text.find_first_not_of(" \t\n\v\f\r");
    used = 0;
    if (p == std::string_view::npos)
        return 0.0;
    const bool negative = text[p] == '-';
    if (text[p] == '-' || text[p] == '+')
        ++p;
    DigitCollector collector;
    for (; p < text.size(); ++p) {
        if (is_digit(text[p]))
            collector.add(text[p]);
        else if (text[p] == '.' && !collector.point_seen)
            collector.point_seen = true;
        else
            break;
    }
    if (!collector.any)
        return 0.0;
    collector.exponent += parse_exponent(text, p);
    used = p;
    const double value = collected_value(collector);
    return negative ? -value : value;
}

NumberText format_fixed(double x, int decimals) {
    if (!std::isfinite(x))
        return not_finite_text(x);
    const Decimal decimal = to_decimal(x);
    return write_fixed(round_significant(decimal, decimal.exponent + 1 + decimals), decimals);
}

NumberText format_exponent(double x, int decimals) {
    if (!std::isfinite(x))
        return not_finite_text(x);
    return write_exponent(round_significant(to_decimal(x), decimals + 1), decimals);
}

NumberText format_general(double x, int significant) {
    if (!std::isfinite(x))
        return not_finite_text(x);
    const Decimal decimal = round_significant(to_decimal(x), significant);
    const int shown = significant_count(decimal);
    if (decimal.exponent < -4 || decimal.exponent >= significant)
        return write_exponent(decimal, shown - 1);
    return write_fixed(decimal, shown - 1 - decimal.exponent);
}

double round6_by_digits(double x) {
    if (!std::isfinite(x) || x == 0)
        return x;
    const Decimal decimal = to_decimal(x);
    const Decimal rounded = round_significant(decimal, decimal.exponent + 1 + 6);
    // Fewer digits divide with a single rounding; those that are dropped are 0.
    const int dropped = std::clamp(DIGIT_COUNT - 1 - 6 - rounded.exponent, 0, DIGIT_COUNT - 1);
    const double value =
        from_decimal(rounded.digits / POWERS_OF_TEN[dropped], rounded.exponent - (DIGIT_COUNT - 1) + dropped);
    return rounded.negative ? -value : value;
}

double round6(double x) {
    const double magnitude = std::fabs(x);
    // From here on the 17 digits do not reach beyond the sixth decimal, and they give the number back exactly.
    if (!(magnitude < 1e10))
        return x;
    if (magnitude == whole_part(magnitude))
        return x;
    if (magnitude < 1e9) {
        // Away from a tie the nearest millionth is certain: the product's rounding and that to 17 digits move it by
        // less than 0.07 (by less than 0.0002 below 10^6), and millionths below 2^53 divide with a single rounding.
        // Ties go by the digits.
        const double millionths = magnitude * 1e6;
        const double whole = whole_part(millionths);
        const double rest = millionths - whole;
        const double margin = magnitude < 1e6 ? 0.001 : 0.1;
        if (rest < 0.5 - margin)
            return std::copysign(whole / 1e6, x);
        if (rest > 0.5 + margin)
            return std::copysign((whole + 1) / 1e6, x);
    }
    return round6_by_digits(x);
}

int compare_numbers(double a, double b) {
    const double left = round6(a);
    const double right = round6(b);
    if (left == right)
        return 0;
    return left > right ? 1 : -1;
}

std::int32_t truncate_to_int(double x) {
    if (std::isnan(x))
        return 0;
    if (x >= 2147483647.0)
        return std::numeric_limits<std::int32_t>::max();
    if (x <= -2147483648.0)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(x);
}

} // namespace quillon
