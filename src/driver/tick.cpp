// SPDX-License-Identifier: MIT
// machine_tick: what every tick does first and last, and which state it serves. STATE_RUN is in run_state.cpp.
#include "core/controls.h"
#include "core/display_line.h"
#include "core/invariants.h"
#include "core/program.h"
#include "core/run_control.h"
#include "driver/run_state.h"
#include "keys/soft_keyboard.h"
#include "keys/virtual_keys.h"
#include "statements/command_line.h"
#include "statements/input.h"

namespace quillon {
namespace {

/// The clear key: Home, or its key on the soft keyboard.
bool clear_key_down(const Machine& m) {
    return m.keys.held_key == VK_HOME || m.soft.soft_key_code == number_of(KEY_CLEAR);
}

/// What clears an error: the clear key, and the Up key of the PC.
bool error_key_down(const Machine& m) { return clear_key_down(m) || m.keys.held_key == VK_UP; }

/// Counts the tone down. True when the program waits for its end and this tick does nothing else.
bool tone_holds_tick(Machine& m) {
    Sound& sound = m.sound;
    if (sound.sound_ticks_left == 0)
        return false;
    if (--sound.sound_ticks_left == 0) {
        if (m.settings.pcm_beep && sound.tone.samples > 0)
            m.around->host.stop_tone();
        sound.sound_holds_run = false;
    }
    return sound.sound_holds_run;
}

void blink_cursor(Machine& m) {
    if (m.screen.blink_counter++ > m.settings.cursor_interval) {
        m.screen.blink_counter = 0;
        m.screen.cursor_visible = !m.screen.cursor_visible;
    }
}

/// An error holds the machine until it is cleared. One of a command line has a state of its own.
bool error_holds_tick(Machine& m) {
    if (m.run.run_state == STATE_COMMAND_ERROR || !failed(m) || m.error.error_code == ERROR_INPUT)
        return false;
    if (error_key_down(m)) {
        open_command_line(m);
        m.keys.enter_request = false;
        m.error.error_code = ERROR_NONE;
    }
    return true;
}

void tick_print_wait(Machine& m) {
    if (m.keys.enter_request)
        end_wait_for_exe(m);
}

void tick_stopped(Machine& m) {
    if (m.keys.enter_request)
        resume(m);
    else if (clear_key_down(m))
        open_command_line_while_stopped(m);
}

void tick_ended(Machine& m) {
    if (clear_key_down(m))
        open_command_line(m);
}

/// "P" and a place for each area: its digit, or a mark when it is in use; the selected one blinks.
void tick_select(Machine& m) {
    const char key = m.keys.key_string[0];
    if (key >= '0' && key <= '9') {
        m.settings.run_page = key - '0';
        clear_key(m);
    }
    auto& line = m.screen.display_line;
    line[0] = 'P';
    line[1] = ' ';
    char* mark = line.data() + 2;
    for (int n = 0; n < AREA_COUNT; ++n) {
        const bool hidden = n == m.settings.run_page && !m.screen.cursor_visible;
        *mark++ = hidden ? ' ' : area_mark(m, n);
    }
}

void tick_command(Machine& m) {
    command_entry_tick(m);
    if (m.keys.enter_request && m.trace.trace_mode)
        m.around->host.refresh_trace();
    m.keys.enter_request = false;
}

void tick_command_error(Machine& m) {
    if (error_key_down(m))
        clear_command_error(m);
}

void serve_state(Machine& m) {
    switch (m.run.run_state) {
    case STATE_RUN: return tick_run(m);
    case STATE_PRINT_WAIT: return tick_print_wait(m);
    case STATE_INPUT: return input_entry_tick(m);
    case STATE_STOPPED:
    case STATE_LINE_SHOWN: return tick_stopped(m);
    case STATE_ENDED: return tick_ended(m);
    case STATE_SELECT: return tick_select(m);
    case STATE_COMMAND: return tick_command(m);
    case STATE_COMMAND_ERROR: return tick_command_error(m);
    case STATE_TO_COMMAND: return open_command_line(m);
    }
}

void serve_tick(Machine& m) {
    if (tone_holds_tick(m))
        return;
    soft_keyboard_tick(m);
    blink_cursor(m);
    if (error_holds_tick(m))
        return;
    serve_state(m);
    if (m.keys.held_key != 0 && !m.around->host.is_key_down(m.keys.held_key))
        clear_key(m);
    m.keys.enter_request = false;
}

} // namespace

void machine_tick(Machine& m) {
    serve_tick(m);
    // A line that fits, as most do, never scrolls.
    m.screen.display_offset = m.screen.display_cursor < DISPLAY_WIDTH ? 0 : first_visible_column(m);
#ifdef QUILLON_CHECK_INVARIANTS
    require_invariants(m);
#endif
}

} // namespace quillon
