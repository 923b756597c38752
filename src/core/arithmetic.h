// The arithmetic of the operators, and the range of numbers: what evaluating from text and running expression code
// share.
#pragma once

#include "core/token.h"

#include <cmath>

namespace quillon {

/// The result of "*", "/" (the divisor is not 0), EX, EM or "^".
inline double arithmetic(int operation, double left, double right) {
    switch (operation) {
    case '*': return left * right;
    case '/': return left / right;
    case TOKEN_EX: return left * std::pow(10.0, right);
    case TOKEN_EM: return left / std::pow(10.0, right);
    default: return std::pow(left, right);
    }
}

/// How tightly an operator binds. Each level takes its operands from the one behind it.
enum Level : int { LEVEL_SUM, LEVEL_TERM, LEVEL_POWER, LEVEL_FACTOR };

/// The level of the operator that a token is; LEVEL_FACTOR for those that are none.
constexpr Level level_of(int token) {
    switch (token) {
    case '+':
    case '-': return LEVEL_SUM;
    case '*':
    case '/': return LEVEL_TERM;
    case '^':
    case TOKEN_EX:
    case TOKEN_EM: return LEVEL_POWER;
    default: return LEVEL_FACTOR;
    }
}

/// The range of numbers that a factor may have; not-a-number has none.
inline bool in_number_range(double x) {
    constexpr double NUMBER_MIN = 1e-99;
    constexpr double NUMBER_MAX = 1e100;
    const double magnitude = std::fabs(x);
    return (magnitude >= NUMBER_MIN && magnitude <= NUMBER_MAX) || x == 0;
}

} // namespace quillon
