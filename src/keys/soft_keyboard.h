// SPDX-License-Identifier: MIT
// The soft keyboard at work. A host opens it and hands in the mouse (core/controls.h); mouse events are noted as they
// come and carried out by the tick, one at a time.
#pragma once

namespace quillon {

struct Machine;

/// One tick: carries out a press or a release, and repeats a character key that is held, first after ten ticks and
/// then every other one. A key that has just begun an entry comes up only after the line editor has seen it.
void soft_keyboard_tick(Machine& m);

/// The layer that the latches show, 0-5.
int current_soft_layer(const Machine& m);

} // namespace quillon
