// SPDX-License-Identifier: MIT
// The terminal as it was: noted before anything changes it, and put back at the end of the program, whatever that is,
// a crash included. What a handler of signals needs is made ready beforehand.
#pragma once

namespace quillon {

/// Whether terminfo knows the terminal, and how to place its cursor.
bool can_draw_on_terminal();

/// Notes the state of the terminal and watches the signals that end a program. One that reports a crash puts the
/// terminal back and then takes its course; any other is noted for `signal_to_leave`. Changes of the terminal's size
/// are noted for `take_size_change`. False when standard input is no terminal. To be called before the screen is set
/// up.
bool guard_terminal();

/// The control sequences that end what the screen needs, as terminfo has them. To be called when it has been set up.
void note_screen_sequences();

/// The signal that asked the program to end, 0 while there was none.
int signal_to_leave();

/// Whether the terminal has had another size since the last call.
bool take_size_change();

/// Puts the modes of the terminal back and lets signals take their usual course again. The screen itself has been
/// given back before.
void release_terminal();

} // namespace quillon
