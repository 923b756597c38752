// SPDX-License-Identifier: MIT
// The clock of the machine: everything happens in ticks.
#pragma once

namespace quillon {

struct Machine;

/// One tick: the tone, the blinking cursor, a held error, and then one step of whatever the machine is doing, at most
/// one statement of a program. The host calls it at the pace of the timer, with the modifier keys sampled before.
void machine_tick(Machine& m);

} // namespace quillon
