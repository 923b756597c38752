// SPDX-License-Identifier: MIT
// What functions leave as the current operand, and the machine's angle unit.
#pragma once

#include <string_view>

namespace quillon {

struct Machine;

/// Makes a number the current operand and returns it.
double number_result(Machine& m, double x);

/// Makes a string the current operand; returns 0, the number of strings.
double string_result(Machine& m, std::string_view text);

/// Radians of an angle in the machine's unit, and back.
double to_radians(const Machine& m, double angle);
double from_radians(const Machine& m, double radians);

} // namespace quillon
