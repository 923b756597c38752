// SPDX-License-Identifier: MIT
// What programs and lines have changed in a machine, as one short text for the rows of a table.
#pragma once

#include "core/machine.h"

#include <string>

namespace quillon::testing {

/// What is not as in a new machine, each with a blank before it: cells, calls and loops that are open with limit and
/// step, MODE, SET and tracing. " A=8 B$=X calls 1 loops I..3,J..8/2 RAD PRT E3 TR"
std::string changes(const Machine& m);

} // namespace quillon::testing
