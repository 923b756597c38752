// SPDX-License-Identifier: MIT
// The table of the functions of one factor, and the one reader that serves all of them.
#include "functions/prefix_functions.h"

#include "core/interpreter.h"
#include "core/numbers.h"
#include "functions/arguments.h"
#include "functions/formulas.h"
#include "functions/signatures.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace quillon {
namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double LN_1E100 = 230.2585092; // cut to seven decimals

/// What becomes of the argument before the formula sees it, and of the result.
enum class Angles {
    NONE,
    ARGUMENT, ///< the argument is an angle in the machine's unit
    RESULT,   ///< the result is one
};

constexpr Domain ANY{-INFINITE, INFINITE, false};
constexpr Domain POSITIVE{std::numeric_limits<double>::denorm_min(), INFINITE, false};
constexpr Domain NOT_NEGATIVE{0, INFINITE, false};
constexpr Domain EXPONENT{-LN_1E100, LN_1E100, false};
constexpr Domain UNIT{-1, 1, false};
constexpr Domain BY_UNIT{0, 0, true};

/// The largest angle that SIN, COS and TAN take: four turns, by unit DEG, RAD, GRA.
constexpr double ANGLE_MAX[] = {1440, 8, 1600};

constexpr bool ROUNDED = true; ///< the argument is rounded to six decimals before anything else
constexpr bool AS_IS = false;

/// A function of one factor. Text 0 of its section is for a missing operand, 1 for a string, 2 (by unit 2, 3, 4) for
/// an argument outside the domain.
struct PrefixFunction {
    PrefixSignature signature;
    Angles angles;
    double (*formula)(double);
};

// clang-format off
constexpr PrefixFunction FUNCTIONS[] = {
    // word           section   argument domain               angles            formula
    {{TOKEN_SIN,     "SIN",    ROUNDED, BY_UNIT},             Angles::ARGUMENT, std::sin},
    {{TOKEN_COS,     "COS",    ROUNDED, BY_UNIT},             Angles::ARGUMENT, std::cos},
    {{TOKEN_TAN,     "TAN",    ROUNDED, BY_UNIT},             Angles::ARGUMENT, std::tan},
    {{TOKEN_ASN,     "ASN",    ROUNDED, UNIT},                Angles::RESULT,   std::asin},
    {{TOKEN_ACS,     "ACS",    ROUNDED, UNIT},                Angles::RESULT,   std::acos},
    {{TOKEN_ATN,     "ATN",    ROUNDED, ANY},                 Angles::RESULT,   std::atan},
    {{TOKEN_HYPSIN,  "HYPSIN", ROUNDED, EXPONENT},            Angles::ARGUMENT, std::sinh},
    {{TOKEN_HYPCOS,  "HYPCOS", ROUNDED, EXPONENT},            Angles::ARGUMENT, std::cosh},
    {{TOKEN_HYPTAN,  "HYPTAN", ROUNDED, ANY},                 Angles::ARGUMENT, std::tanh},
    {{TOKEN_HYPASN,  "HYPASN", ROUNDED, {-5e99, 5e99, false}}, Angles::RESULT,   area_sine},
    {{TOKEN_HYPACS,  "HYPACS", ROUNDED, {1, 5e99, false}},    Angles::RESULT,   area_cosine},
    {{TOKEN_HYPATN,  "HYPATN", ROUNDED, UNIT},                Angles::RESULT,   area_tangent},
    {{TOKEN_SQR,     "SQRT",   ROUNDED, NOT_NEGATIVE},        Angles::NONE,     std::sqrt},
    {{TOKEN_EXP,     "EXP",    ROUNDED, EXPONENT},            Angles::NONE,     std::exp},
    {{TOKEN_LN,      "LN",     ROUNDED, POSITIVE},            Angles::NONE,     std::log},
    {{TOKEN_LOG,     "LOG",    ROUNDED, POSITIVE},            Angles::NONE,     std::log10},
    {{TOKEN_INT,     "INT",    ROUNDED, ANY},                 Angles::NONE,     std::floor},
    {{TOKEN_FRAC,    "FRAC",   ROUNDED, ANY},                 Angles::NONE,     fraction},
    {{TOKEN_ABS,     "ABS",    ROUNDED, ANY},                 Angles::NONE,     std::fabs},
    {{TOKEN_SGN,     "SGN",    AS_IS,   ANY},                 Angles::NONE,     sign},
    {{TOKEN_FACT,    "FACT",   ROUNDED, ANY},                 Angles::NONE,     factorial},
    {{TOKEN_CUR,     "CUR",    AS_IS,   ANY},                 Angles::NONE,     cube_root},
    {{TOKEN_EOX,     "EOX",    AS_IS,   ANY},                 Angles::NONE,     itself},
    {{TOKEN_EOY,     "EOY",    AS_IS,   ANY},                 Angles::NONE,     itself},
};
// clang-format on

/// The rows by token; only those of the functions are looked at.
constexpr auto ROWS = [] {
    std::array<std::uint8_t, FUNCTION_COUNT> rows{};
    for (std::size_t row = 0; row < std::size(FUNCTIONS); ++row)
        rows[token_distance(FUNCTION_FIRST, FUNCTIONS[row].signature.token)] = static_cast<std::uint8_t>(row);
    return rows;
}();

const PrefixFunction& function_row(TokenCode token) { return FUNCTIONS[ROWS[token_distance(FUNCTION_FIRST, token)]]; }

/// Reads the factor that the function applies to. CUR has one text for a missing operand and for a string.
bool read_operand(Machine& m, const PrefixFunction& function, double& x) {
    m.eval.value.kind = VALUE_NONE;
    x = eval_factor(m);
    const bool is_string = m.eval.value.kind == VALUE_STRVAR || m.eval.value.kind == VALUE_STRING;
    const int string_text = function.signature.token == TOKEN_CUR ? 0 : 1;
    if (!failed(m) && m.eval.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, {function.signature.section, 0});
    else if (!failed(m) && is_string)
        raise_error(m, ERROR_SYNTAX, {function.signature.section, string_text});
    return !failed(m);
}

/// Not inlined: the text must not lie in the frames of nested calls.
[[gnu::noinline]] void raise_domain_error(Machine& m, const PrefixFunction& function, double x) {
    const int text = 2 + (function.signature.domain.by_unit ? number_of(m.settings.angle_unit) : 0);
    constexpr int SHOWN_DIGITS = 6;
    raise_error(m, ERROR_ARITHMETIC, {function.signature.section, text}, " [%s]",
                format_general(x, SHOWN_DIGITS).c_str());
}

} // namespace

bool in_domain(const Domain& domain, AngleUnit unit, double x) {
    const double highest = domain.by_unit ? ANGLE_MAX[number_of(unit)] : domain.highest;
    const double lowest = domain.by_unit ? -highest : domain.lowest;
    return x >= lowest && x <= highest;
}

const PrefixSignature* find_prefix_signature(TokenCode token) {
    if (token < FUNCTION_FIRST || token > FUNCTION_LAST)
        return nullptr;
    const PrefixSignature& signature = function_row(token).signature;
    return signature.token == token ? &signature : nullptr;
}

double prefix_argument(const PrefixSignature& signature, double x) { return signature.rounded ? round6(x) : x; }

bool prefix_formula(const Machine& m, TokenCode token, double& x) {
    const PrefixFunction& function = function_row(token);
    x = prefix_argument(function.signature, x);
    if (!in_domain(function.signature.domain, m.settings.angle_unit, x))
        return false;
    x = function.formula(function.angles == Angles::ARGUMENT ? to_radians(m, x) : x);
    if (function.angles == Angles::RESULT)
        x = from_radians(m, x);
    return true;
}

double prefix_function(Machine& m) {
    const PrefixFunction& function = function_row(m.eval.token);
    double x = 0;
    if (!read_operand(m, function, x))
        return 0;
    const double argument = x;
    if (prefix_formula(m, function.signature.token, x))
        return number_result(m, x);
    raise_domain_error(m, function, prefix_argument(function.signature, argument));
    return 0;
}

} // namespace quillon
