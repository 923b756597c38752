// SPDX-License-Identifier: MIT
// What holds of the machine's record between any two ticks, whatever was loaded, typed or clicked. The builds that
// check it after every tick define QUILLON_CHECK_INVARIANTS; fuzzers and the soak ask for themselves.
#pragma once

namespace quillon {

struct Machine;

/// The name of a field that is not as it must be; null when all hold. Codes and counts lie in their ranges, positions
/// in a text that is alive, variables among the cells, texts end where they say.
const char* check_invariants(const Machine& m);

/// Ends the program, with a line on standard error that names the field, when one is not as it must be.
void require_invariants(const Machine& m);

} // namespace quillon
