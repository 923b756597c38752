// SPDX-License-Identifier: MIT
// The arithmetic of the operators, and the range of numbers: what evaluating from text and running expression code
// share.
#pragma once

#include "core/token.h"

#include <cmath>

namespace quillon {

/// The result of "*", "/" (the divisor is not 0), EX, EM or "^".
inline double arithmetic(TokenCode operation, double left, double right) {
    switch (operation) {
    case TOKEN_TIMES: return left * right;
    case TOKEN_DIVIDE: return left / right;
    case TOKEN_EX: return left * std::pow(10.0, right);
    case TOKEN_EM: return left / std::pow(10.0, right);
    default: return std::pow(left, right);
    }
}

/// How tightly an operator binds. Each level takes its operands from the next one.
enum class Level : std::int8_t { SUM, TERM, POWER, FACTOR };

/// The level of a token that is an operator; FACTOR for all others.
constexpr Level level_of(TokenCode token) {
    switch (token) {
    case TOKEN_PLUS:
    case TOKEN_MINUS: return Level::SUM;
    case TOKEN_TIMES:
    case TOKEN_DIVIDE: return Level::TERM;
    case TOKEN_POWER:
    case TOKEN_EX:
    case TOKEN_EM: return Level::POWER;
    default: return Level::FACTOR;
    }
}

/// The range of numbers that a factor may have; not-a-number has none.
inline bool in_number_range(double x) {
    constexpr double NUMBER_MIN = 1e-99;
    constexpr double NUMBER_MAX = 1e100;
    const double magnitude = std::fabs(x);
    return (magnitude >= NUMBER_MIN && magnitude <= NUMBER_MAX) || x == 0;
}

/// The level from which an operator of `level` takes its right operand.
constexpr Level next_level(Level level) { return static_cast<Level>(static_cast<int>(level) + 1); }

} // namespace quillon
