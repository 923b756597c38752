// SPDX-License-Identifier: MIT
// Numbers: every conversion between doubles and decimal text, and the two ways of comparing that the machine has.
// Nothing here depends on the locale. A number is first rounded correctly to the 17 significant digits that tell any
// two doubles apart; whatever is shorter is rounded half away from zero on those digits, and digits beyond them are 0.
#pragma once

#include "core/text.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillon {

/// The longest text that a conversion gives: what does not fit on the display line is cut.
using NumberText = BoundedText<127>;

/// A finite number as 17 significant digits: `digits` is 0 or lies in 10^16..10^17-1, and the value is
/// digits * 10^(exponent - 16), so `exponent` is that of the first digit.
struct Decimal {
    bool negative;
    std::uint64_t digits;
    int exponent;
};

/// The 64 bits of a number, and the number of these bits. (std::bit_cast is missing from some libraries.)
inline std::uint64_t bits_of(double x) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

inline double number_of_bits(std::uint64_t bits) {
    double x = 0;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

/// The decimal form of a finite number. A negative zero is plain 0.
Decimal to_decimal(double x);

/// The same by way of the C library's text: what the quick ways of `to_decimal` must agree with.
Decimal to_decimal_by_text(double x);

/// Keeps the first `count` significant digits (any number; none or fewer keep 0 or round up to 1), rounding half away
/// from zero. The result has its digits at the same places; a carry raises `exponent`.
Decimal round_significant(Decimal decimal, int count);

/// The double nearest to significand * 10^exponent; 0 and infinity beyond the range.
double from_decimal(std::uint64_t significand, int exponent);

/// Reads a decimal number (blanks, sign, digits with at most one point, exponent) from the start of `text` as the C
/// library does, without its hexadecimal numbers, infinities and not-a-numbers. `used` gets the number of bytes read,
/// 0 when there is no number.
double parse_decimal(std::string_view text, std::size_t& used);

/// Fixed form with `decimals` digits behind the point ("%.*f").
NumberText format_fixed(double x, int decimals);

/// Exponent form with `decimals` digits behind the point and at least two exponent digits ("%.*e").
NumberText format_exponent(double x, int decimals);

/// The shorter of the two with `significant` digits at most and no trailing zeros ("%.*g").
NumberText format_general(double x, int significant);

/// The number rounded to six decimals. Comparisons and most arguments go through it.
double round6(double x);

/// `round6` by way of text: what the quick way must agree with.
double round6_by_digits(double x);

/// 1, 0 or -1 as a is above, equal to or below b, both rounded to six decimals. -1 for not-a-number on either side.
int compare_numbers(double a, double b);

/// Truncation toward zero. Beyond the range the nearest end; 0 for not-a-number.
std::int32_t truncate_to_int(double x);

} // namespace quillon
