// SPDX-License-Identifier: MIT
// The soft keyboard at work: mouse events are noted as they come and carried out by the tick, one at a time.
#pragma once

namespace quillon {

struct Machine;

/// Opens the keyboard with nothing pressed and no latch on; nothing when it is open.
void open_soft_keyboard(Machine& m);

/// Closes the keyboard; latches and held keys go with it.
void close_soft_keyboard(Machine& m);

/// The mouse button goes down on a key of the grid (row 0-3, column 0-13; a place outside is ignored), and up again.
/// A press that is over before the tick has seen it still counts.
void soft_mouse_down(Machine& m, int row, int column);
void soft_mouse_up(Machine& m);

/// One tick: carries out a press or a release, and repeats a character key that is held, first after ten ticks and
/// then every other one. A key that has just begun an entry comes up only after the line editor has seen it.
void soft_keyboard_tick(Machine& m);

/// The layer that the latches show, 0-5.
int current_soft_layer(const Machine& m);

} // namespace quillon
