// SPDX-License-Identifier: MIT
// STATE_RUN: statements, and the waits that a statement leaves to the tick.
#pragma once

namespace quillon {

struct Machine;

/// One tick of STATE_RUN.
void tick_run(Machine& m);

} // namespace quillon
