// SPDX-License-Identifier: MIT
// How programs end and what they print, each as one short text for the rows of a table.
#pragma once

#include "tests/support/test_machine.h"

#include <string>
#include <string_view>

namespace quillon::testing {

/// How a program has ended: "ok"; "ERR4 P0-10 GOTO 5[99]" with the error text, the catalogue entry and the detail
/// behind it; or "ended GOTO 3[3]" where a detail but no error is left.
std::string failure_of(const TestMachine& t);

/// What `PRINT expression` shows after the lines of `setup`, without the sign blank, or how it fails ("ERR3 SIN 2
/// [1441]"). Unit, formats and variables are those of a new machine.
std::string printed(TestMachine& t, std::string_view setup, std::string_view expression);

} // namespace quillon::testing
