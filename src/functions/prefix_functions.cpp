// SPDX-License-Identifier: MIT
// The one reader that serves all functions of one factor.
#include "functions/prefix_functions.h"

#include "core/arguments.h"
#include "core/errors.h"
#include "core/machine.h"
#include "core/numbers.h"
#include "functions/function_table.h"
#include "functions/results.h"

namespace quillon {
namespace {

/// The rows by token; only those of the functions of one factor are looked at.
constexpr auto ROWS = [] {
    std::array<std::uint8_t, FUNCTION_COUNT> rows{};
    for (std::size_t row = 0; row < std::size(PREFIX_FUNCTIONS); ++row)
        rows[token_distance(FUNCTION_FIRST, PREFIX_FUNCTIONS[row].token)] = static_cast<std::uint8_t>(row);
    return rows;
}();

std::size_t row_of(TokenCode token) { return ROWS[token_distance(FUNCTION_FIRST, token)]; }

/// `converted` for the two ways that these functions have, in the place where it costs least.
double rounded_argument(const PrefixFunction& function, double x) {
    return function.conversion == ROUNDED ? round6(x) : x;
}

} // namespace

bool prefix_formula(const Machine& m, TokenCode token, double& x) {
    const PrefixFunction& function = PREFIX_FUNCTIONS[row_of(token)];
    x = rounded_argument(function, x);
    if (!in_domain(function.domain, m.settings.angle_unit, x))
        return false;
    x = function.formula(function.angles == Angles::ARGUMENT ? to_radians(m, x) : x);
    if (function.angles == Angles::RESULT)
        x = from_radians(m, x);
    return true;
}

double prefix_function(Machine& m) {
    const std::size_t row = row_of(m.eval.token);
    const Signature& signature = PREFIX_SIGNATURES[row];
    double x = 0;
    if (!read_operand(m, signature, PREFIX_ARGUMENTS[row], x))
        return 0;
    const double argument = x;
    if (prefix_formula(m, signature.token, x))
        return number_result(m, x);
    raise_domain_error(m, signature, PREFIX_ARGUMENTS[row], rounded_argument(PREFIX_FUNCTIONS[row], argument));
    return 0;
}

} // namespace quillon
