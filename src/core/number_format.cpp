// SPDX-License-Identifier: MIT
// The three forms in which numbers are shown: automatic, exponent (SET E) and fixed (SET F).
#include "core/number_format.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/variables.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>

namespace quillon {
namespace {

constexpr MessageId MESSAGE_PRINT_STRING_CELL{"PRINT", 0};
constexpr int FRAC_DIGIT_COUNT = 17;

int count_digits(std::uint64_t n) {
    int count = 0;
    for (; n != 0; n /= 10)
        ++count;
    return count;
}

int count_trailing_zeros(std::uint64_t n) {
    int count = 0;
    for (; n != 0 && n % 10 == 0; n /= 10)
        ++count;
    return count;
}

/// Puts the machine's exponent mark and the exponent's digits, two at least, in the place of "e+00".
NumberText with_exponent_mark(const NumberText& text) {
    const std::size_t mark = text.view().find('e');
    if (mark == std::string_view::npos)
        return text;
    NumberText marked(text.view().substr(0, mark));
    marked.push_back(static_cast<char>(text[mark + 1] == '-' ? CHAR_NEGATIVE_EXPONENT : CHAR_EXPONENT));
    marked.append(text.view().substr(mark + 2));
    return marked;
}

/// Digits behind the point of an automatic exponent form: a negative number has room for one less.
int limit_decimals(double x, int decimals) {
    constexpr int DECIMALS_MAX = 7;
    const int shown = x < 0 ? DECIMALS_MAX - 1 : DECIMALS_MAX;
    return decimals >= DECIMALS_MAX ? shown : decimals;
}

/// Whole numbers of at most ten digits are their digits: what the general form gives for them.
bool short_whole_text(double x, NumberText& text) {
    constexpr double LIMIT = 1e10;
    if (!(std::fabs(x) < LIMIT) || x != static_cast<double>(static_cast<std::int64_t>(x)))
        return false;
    char digits[12];
    char* first = std::end(digits);
    auto rest = static_cast<std::uint64_t>(std::fabs(x));
    do {
        *--first = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (x < 0)
        *--first = '-';
    text.assign({first, static_cast<std::size_t>(std::end(digits) - first)});
    return true;
}

/// Plain decimal up to ten digits; an exponent for longer integers and for fractions below 0.001.
NumberText automatic_form(double x) {
    constexpr int SIGNIFICANT_DIGITS = 10;
    constexpr int LEADING_ZEROS_MAX = 2;
    NumberText whole;
    if (short_whole_text(x, whole))
        return whole;
    const DigitAnalysis digits = analyse_digits(x);
    if (digits.int_digits > SIGNIFICANT_DIGITS)
        return format_exponent(x, limit_decimals(x, digits.int_digits - digits.int_trailing_zeros - 1));
    if (std::fabs(x) < 1 && digits.frac_leading_zeros > LEADING_ZEROS_MAX)
        return format_exponent(x, limit_decimals(x, digits.frac_digits - digits.frac_leading_zeros - 1));
    return format_general(x, SIGNIFICANT_DIGITS);
}

NumberText exponent_form(double x, int set_e_digits) {
    constexpr int DEFAULT_DIGITS = 8;
    const int significant = set_e_digits == 0 ? DEFAULT_DIGITS : set_e_digits;
    return format_exponent(x, significant - 1);
}

} // namespace

DigitAnalysis analyse_digits(double x) {
    constexpr double FRACTION_MIN = 1e-15;
    constexpr double INTEGER_LIMIT = 9223372036854775808.0; // 2^63
    DigitAnalysis digits{};
    double integer = 0;
    double fraction = std::fabs(std::modf(x, &integer));
    integer = std::fabs(integer);
    if (integer < INTEGER_LIMIT) {
        digits.int_digits = count_digits(static_cast<std::uint64_t>(integer));
        digits.int_trailing_zeros = count_trailing_zeros(static_cast<std::uint64_t>(integer));
    }
    if (fraction < FRACTION_MIN)
        fraction = 0;
    const auto decimals = static_cast<std::uint64_t>(fraction * 1e17);
    if (decimals != 0) {
        digits.frac_digits = FRAC_DIGIT_COUNT - count_trailing_zeros(decimals);
        digits.frac_leading_zeros = FRAC_DIGIT_COUNT - count_digits(decimals);
    }
    return digits;
}

NumberText number_text(const Machine& m, double x) {
    if (!std::isfinite(x))
        return format_general(x, 1);
    if (m.settings.set_f_digits >= 0)
        return format_fixed(x, m.settings.set_f_digits);
    return with_exponent_mark(m.settings.set_e_digits >= 0 ? exponent_form(x, m.settings.set_e_digits)
                                                           : automatic_form(x));
}

NumberText shown_number(const Machine& m, double x) {
    const bool sign_blank = x >= 0 && m.run.run_state != STATE_COMMAND;
    NumberText text(sign_blank ? " " : "");
    text.append(number_text(m, x));
    return text;
}

bool format_number(Machine& m, NumberText& text) {
    Value& value = m.eval.value;
    switch (value.kind) {
    case VALUE_STRVAR:
        if (!value.complete && cell_at(m, value.cell).kind != CELL_STRING)
            return false;
        [[fallthrough]];
    case VALUE_STRING: text.assign(value.text); return true;
    case VALUE_NUMVAR:
        if (value_type(m) == TYPE_STRING) {
            raise_error(m, ERROR_VARIABLE, MESSAGE_PRINT_STRING_CELL);
            return false;
        }
        [[fallthrough]];
    case VALUE_NUMBER: break;
    default: return false;
    }
    text = shown_number(m, value.number);
    value.text = text;
    return true;
}

} // namespace quillon
