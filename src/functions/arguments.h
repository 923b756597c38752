// SPDX-License-Identifier: MIT
// How functions read their arguments, and the checks that they share. Each reader reports through `error_code` and
// gives false after an error.
#pragma once

#include "core/errors.h"
#include "core/machine.h"

namespace quillon {

/// The catalogue's numbers, in a function's section, for an argument that is not what it should be. A missing operand
/// is accepted where there is no text for it.
struct ArgumentErrors {
    static constexpr int ACCEPTED = -1;
    const char* section;
    int missing;         ///< no operand
    int string_variable; ///< a cell read as a string
    int string;          ///< any other string
};

/// Reads the "(" of an argument list.
bool open_arguments(Machine& m, MessageId missing);

/// Reads a whole expression that must be a number; `token` is what follows it.
bool read_number(Machine& m, const ArgumentErrors& errors, double& x);

/// Checks that the current token is a ",".
bool require_comma(Machine& m, MessageId missing);

/// Checks that the current token is the ")" of the list and reads the one behind it; `value` stays.
bool close_arguments(Machine& m, MessageId missing);

/// Reads the token behind a ")", if the current token is one; `value` stays.
void pass_closing(Machine& m);

/// Makes a number the current operand and returns it.
double number_result(Machine& m, double x);

/// Makes a string the current operand; returns 0, the number of strings.
double string_result(Machine& m, std::string_view text);

/// Radians of an angle in the machine's unit, and back.
double to_radians(const Machine& m, double angle);
double from_radians(const Machine& m, double radians);

/// The low 32 bits of a number truncated to 64 bits; 0 beyond those.
std::int32_t low_32_bits(double x);

} // namespace quillon
