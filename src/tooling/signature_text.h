// SPDX-License-Identifier: MIT
// Signatures as people read them.
#pragma once

#include "core/signature.h"

#include <string>

namespace quillon {

/// The signature of a function or a statement; null for words whose operands are not regular, and all other tokens.
const Signature* find_word_signature(TokenCode token);

/// A word with its arguments: "MID$(start [, length])", "SQR x", "BEEPS octave, note, milliseconds", "KEY$".
std::string signature_text(const Signature& signature);

/// The numbers that an argument takes: "numbers from 0 to 11". Empty when it takes any.
std::string domain_text(const Argument& argument);

/// A number in a report.
std::string shown_number(double x);

} // namespace quillon
