// SPDX-License-Identifier: MIT
// How a value is shown: the text that PRINT, STR$, the answer key and a command line's result give for it.
#pragma once

#include "core/machine.h"
#include "core/numbers.h"

namespace quillon {

/// The digits of a number, as the automatic form looks at them.
struct DigitAnalysis {
    int int_digits;         ///< digits of the integer part, 0 when that is 0 or 2^63 and more
    int int_trailing_zeros; ///< zeros at the right end of the integer part
    int frac_digits;        ///< place of the last decimal other than 0 among the first 17, 0 when there is none
    int frac_leading_zeros; ///< zeros before the first decimal other than 0
};

/// Analyses a finite number. A fraction below 1E-15 counts as none.
DigitAnalysis analyse_digits(double x);

/// The text of a number in the form that SET chooses, without the sign blank. Exponents stand behind one of the
/// machine's exponent marks. At most 127 characters.
NumberText number_text(const Machine& m, double x);

/// The same with a blank in the place of the sign of a number that is not negative, outside command mode.
NumberText shown_number(const Machine& m, double x);

/// The text of `value` as it is shown: numbers as `shown_number` gives them, strings as they are. False when there is
/// nothing to show: no value, or a cell read as a string that holds none. A cell read as a number that holds a string
/// raises ERR6.
bool format_number(Machine& m, NumberText& text);

} // namespace quillon
