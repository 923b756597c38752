// SPDX-License-Identifier: MIT
// Carrying out a signature: reads a word's arguments as its row says and reports what is wrong with them.
#pragma once

#include "core/signature.h"

namespace quillon {

struct Machine;

constexpr std::size_t ARGUMENTS_MAX = 3;

/// The arguments of a word. The text of a string is that of the current operand.
struct Arguments {
    std::array<double, ARGUMENTS_MAX> number{}; ///< converted as the row says; 0 of what is no number
    std::size_t count = 0;
};

/// Reads what follows a word, the current token, up to a ")" that is required; false after an error. Any other ")" is
/// left to `pass_closing`, because the result is there before it is read.
bool read_arguments(Machine& m, const Signature& signature, Arguments& arguments);

/// Passes over a ")" that is not required, and over what stands in its place where that does not matter; the operand
/// stays.
void pass_closing(Machine& m, const Signature& signature);

/// Reads an operand and checks its form, not its value: the part of `read_arguments` for words whose only argument is
/// checked elsewhere. False after an error.
bool read_operand(Machine& m, const Signature& signature, const Argument& argument, double& x);

/// Reports a number outside the domain of an argument.
void raise_domain_error(Machine& m, const Signature& signature, const Argument& argument, double x);

} // namespace quillon
