// SPDX-License-Identifier: MIT
// What a host may tell the machine: the other half of core/host.h, which is what the machine asks of its host. A
// window, a terminal, a page, a script and a test reach the machine by these calls alone.
//
// Whose turn it is: everything is called on the thread that ticks the machine, between two ticks, unless it is marked
// "also within a tick"; then a callback of Host may call it, as the host's commands do. None blocks, and none but
// `machine_tick` runs anything of a program. Whatever a person does may come at any moment and in any order: what means
// nothing in the machine's present state changes nothing.
//
// Besides, a host may read the whole record at any time, and between ticks write what it keeps between sessions: the
// variables, `random_seed`, and the settings, each in its range (core/fields). Everything else in the record is the
// machine's own. A host that has whole lines and no keyboard answers INPUT by `begin_entry` and `prompt_again` of
// core/run_control. The calls are defined on the floors that they are about: core, keys, driver.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

struct Machine;

// --- Time (driver/tick.cpp) ---

/// One tick: the tone, the blinking cursor, a held error, and then one step of whatever the machine is doing, at most
/// one statement of a program. For whoever has the clock, every `settings.timer_interval` milliseconds or as fast as it
/// likes. Never from within a tick: a callback of Host that ticks the machine again would lose its place.
void machine_tick(Machine& m);

// --- The listing (core/program.cpp) ---

/// What became of a load.
enum class LoadResult {
    LOADED,
    UNREADABLE, ///< the file could not be read: nothing has changed
    FAULTY,     ///< the text has a fault: no listing is loaded now
};

/// Makes a text the machine's program. On success the machine waits for the selection of an area; variables stay. On a
/// fault no listing is loaded any more, and the machine waits for a selection with a blank line; `system_message` says
/// what is wrong. Seeds the random generator with the host's milliseconds. Not within a tick, whose statement it would
/// take away; nor while a tone of the old program plays, which is stopped first.
LoadResult load_listing_text(Machine& m, std::string text);

/// Takes the listing out of the machine: no areas, no DATA, selection state.
void unload_listing(Machine& m);

// --- Running and stopping (core/run_control.cpp); also within a tick ---

/// Back to the selection of a program area, with nothing left of a run: stacks, position, pending error, display line,
/// waits and PRT are cleared; variables, listing, settings and the angle unit stay.
void reset_machine(Machine& m);

/// Starts the area of the setting `run_page` from its beginning; an empty one leads to command mode. The listing must
/// not be empty: it is the host that says so.
void start_area(Machine& m);

/// Goes on after a stop, where it was, on a cleared display. Only in STATE_STOPPED.
void run_on(Machine& m);

/// Halts a running program; a halted one shows its position. Nothing where nothing runs.
void stop(Machine& m);

/// Begins command mode with "READY" and the area that RUN starts; the first key or EXE opens the line. A program that
/// runs is left for good.
void begin_command_mode(Machine& m);

// --- Modes (core/controls.cpp); also within a tick ---

/// Single steps: the trace window opens or closes, and a statement that waits for its step is let go.
void set_tracing(Machine& m, bool on);

/// The next traced statement may run. Nothing while there are no single steps.
void take_step(Machine& m);

constexpr int OVERDRIVE_INTERVAL_MS = 5; ///< between ticks, while Overdrive is on

/// Shortens the interval between ticks, or gives back the configured one. The clock is to look at `timer_interval`
/// again.
void set_overdrive(Machine& m, bool on);

/// Silences what is left of a tone and lets a program that waits for its end go on. Before a load and a run.
void stop_tone(Machine& m);

// --- The keyboard (keys/key_map.cpp; the first group core/controls.cpp) ---
// A window feeds keys through the shell's key queue, which keeps the pace at which the machine loses none; a script has
// a pace of its own.

/// EXE. Whatever waits for it takes it in the next tick; a tick that waits for something else forgets it.
void press_exe(Machine& m);

/// Makes a text the pending key: a character, a key code or a whole word. It stays pending until its key comes up or
/// something takes it: `held_key` is the code that Host::is_key_down is asked about, 0 for a key that nobody holds.
void set_pending_key(Machine& m, std::string_view text, int held_key = 0);

/// Forgets the pending key: it has come up.
void clear_key(Machine& m);

/// The next pending key is a new press for the line editor, though it may type what the last one typed: else that would
/// be the same key, still held. For every press that is not the repeat of a held key.
void forget_last_key(Machine& m);

/// A key goes down (or repeats while it is held): sets the pending key, asks for EXE, or runs what a function key is
/// for. The modifiers count as they were last sampled. Any code will do; one that means nothing leaves no key.
void on_key_down(Machine& m, int virtual_key, bool auto_repeat);

/// A key goes down while Alt is held: the function keywords of machine mode. Nothing in ASCII mode.
void on_sys_key_down(Machine& m, int virtual_key);

/// A character is typed as the user's own keyboard layout has it, in ASCII mode: it becomes the pending key as it is,
/// except that a letter alone is upper case and one with Shift lower case. `held_code` is the code under which the key
/// counts as down.
void on_character(Machine& m, char character, int held_code);

/// The PC's modifier keys, once before each tick; a latch of the soft keyboard counts as its modifier.
void sample_modifiers(Machine& m, bool shift, bool ctrl, bool alt);

// --- The mouse (keys/lcd_click.cpp, keys/soft_keyboard.cpp) ---

enum class LcdClick {
    LEFT,        ///< the left button is released
    LEFT_DOUBLE, ///< the left button is pressed twice
    RIGHT,       ///< the right button is released
};

/// A click at (x, y) in pixels of the canvas, anywhere. The angle indicators choose their unit; everything else is EXE,
/// except that the selection of a program area takes a click on one of them, and a double click runs it.
void on_lcd_click(Machine& m, LcdClick click, int x, int y);

/// Opens the soft keyboard with nothing pressed and no latch on; nothing when it is open.
void open_soft_keyboard(Machine& m);

/// Closes it; latches and held keys go with it.
void close_soft_keyboard(Machine& m);

/// The mouse button goes down on a key of the grid (row 0-3, column 0-13; a place outside is ignored), and up again.
/// The next ticks carry it out; a press that is over before a tick has seen it still counts. Nothing while the keyboard
/// is closed.
void soft_mouse_down(Machine& m, int row, int column);
void soft_mouse_up(Machine& m);

} // namespace quillon
