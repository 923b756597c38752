// machine_tick: what every tick does first and last, and the run states that are short. STATE_RUN is in run_state.cpp.
#include "driver/tick.h"

#include "core/display_line.h"
#include "core/invariants.h"
#include "core/listing.h"
#include "core/machine.h"
#include "driver/run_state.h"
#include "keys/soft_keyboard.h"
#include "statements/command_line.h"
#include "statements/input.h"

namespace quillon {
namespace {

/// The clear key: Home, or its key on the soft keyboard.
bool clear_key_down(const Machine& m) { return m.held_key == VIRTUAL_KEY_HOME || m.soft_key_code == KEY_CLEAR; }

/// Counts the tone down. True when the program waits for its end and this tick does nothing else.
bool tone_holds_tick(Machine& m) {
    if (m.sound_ticks_left == 0)
        return false;
    if (--m.sound_ticks_left == 0) {
        if (m.pcm_beep == 1 && m.tone.samples > 0)
            m.host.stop_tone();
        m.sound_holds_run = 0;
    }
    return m.sound_holds_run != 0;
}

void blink_cursor(Machine& m) {
    if (m.blink_counter++ > m.cursor_interval) {
        m.blink_counter = 0;
        m.cursor_visible = m.cursor_visible != 0 ? 0 : 1;
    }
}

/// An error holds the machine until the clear key, or the Up key. One of a command line has a state of its own.
bool error_holds_tick(Machine& m) {
    if (m.run_state == STATE_COMMAND_ERROR || m.error_code == ERROR_NONE || m.error_code == ERROR_INPUT)
        return false;
    if (clear_key_down(m) || m.held_key == VIRTUAL_KEY_UP) {
        enter_command_mode(m);
        m.base_state = STATE_COMMAND;
        m.enter_request = 0;
        m.error_code = ERROR_NONE;
    }
    return true;
}

/// The output stands until EXE. A list that goes on keeps its context; one that has ended leaves what it set for this.
void tick_print_wait(Machine& m) {
    if (m.enter_request == 0)
        return;
    clear_display_line(m);
    enter_state(m, m.typed_wait != 0 ? STATE_COMMAND : m.base_state);
    m.typed_wait = 0;
    m.display_offset = 0;
    m.wait_counter = 0;
    resume_statement(m);
    if (is_statement_end(m.token))
        m.stmt_kind = m.kind_after_scroll;
}

/// The context in which a statement goes on: an INPUT asks again.
int resumed_kind(int kind) {
    const bool input = kind == KIND_INPUT || kind == KIND_INPUT_ERROR || kind == KIND_PROMPT;
    return input ? KIND_PROMPT_AGAIN : kind;
}

/// The context in which a stopped statement goes on: an INPUT that is between two elements of its list, with the list.
int resumed_stop(const Machine& m) {
    const bool between_elements = m.saved_stmt_kind == KIND_INPUT && m.saved_run_state == STATE_RUN;
    return between_elements ? KIND_INPUT : resumed_kind(m.saved_stmt_kind);
}

/// What the program was doing when it was stopped, for EXE on an empty command line. A scroll counts as done: its text
/// will be gone.
void remember_stop(Machine& m) {
    m.stopped_kind = m.saved_stmt_kind == KIND_SCROLL ? m.kind_after_scroll : resumed_stop(m);
    m.stopped_token = m.saved_token;
    m.stopped_value = m.saved_value;
    m.stopped_entry = m.entry_line;
}

void resume_stopped(Machine& m) {
    clear_display_line(m);
    enter_state(m, m.base_state);
    m.token = m.saved_token;
    m.stmt_kind = resumed_stop(m);
    m.value = m.saved_value;
    if (m.base_state == STATE_COMMAND)
        clear_entry_line(m);
}

void tick_stopped(Machine& m) {
    if (m.enter_request != 0) {
        resume_stopped(m);
    } else if (clear_key_down(m)) {
        remember_stop(m);
        enter_command_mode(m);
    }
}

void tick_ended(Machine& m) {
    if (clear_key_down(m)) {
        enter_command_mode(m);
        m.base_state = STATE_COMMAND;
    }
}

/// "P" and a place for each area: its digit, or a mark when it is in use; the selected one blinks.
void tick_select(Machine& m) {
    const char key = m.key_string[0];
    if (key >= '0' && key <= '9') {
        m.run_page = key - '0';
        clear_key(m);
    }
    m.display_line[0] = 'P';
    m.display_line[1] = ' ';
    for (int n = 0; n < AREA_COUNT; ++n) {
        const bool hidden = n == m.run_page && m.cursor_visible == 0;
        m.display_line[2 + n] = hidden ? ' ' : area_mark(m, n);
    }
}

void tick_to_command(Machine& m) {
    enter_command_mode(m);
    m.base_state = STATE_COMMAND;
}

void tick_command(Machine& m) {
    command_entry_tick(m);
    if (m.enter_request != 0 && m.trace_mode != 0)
        m.host.refresh_trace();
    m.enter_request = 0;
}

void tick_command_error(Machine& m) {
    if (!clear_key_down(m) && m.held_key != VIRTUAL_KEY_UP)
        return;
    enter_state(m, STATE_COMMAND);
    clear_entry_line(m);
    clear_key(m);
    m.soft_key_code = 0;
    m.error_code = ERROR_NONE;
}

void serve_state(Machine& m) {
    switch (m.run_state) {
    case STATE_RUN: tick_run(m); break;
    case STATE_PRINT_WAIT: tick_print_wait(m); break;
    case STATE_INPUT: input_entry_tick(m); break;
    case STATE_STOPPED:
    case STATE_LINE_SHOWN: tick_stopped(m); break;
    case STATE_ENDED: tick_ended(m); break;
    case STATE_SELECT: tick_select(m); break;
    case STATE_COMMAND: tick_command(m); break;
    case STATE_COMMAND_ERROR: tick_command_error(m); break;
    case STATE_TO_COMMAND: tick_to_command(m); break;
    default: break;
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
    if (m.held_key != 0 && !m.host.is_key_down(m.held_key))
        clear_key(m);
    m.enter_request = 0;
}

} // namespace

void resume_statement(Machine& m) {
    m.token = m.saved_token;
    m.stmt_kind = resumed_kind(m.saved_stmt_kind);
}

void enter_command_mode(Machine& m) {
    m.stmt_kind = KIND_CLEARED;
    clear_entry_line(m); // of an INPUT that was stopped, or the last one of a program
    enter_state(m, STATE_COMMAND);
}

void machine_tick(Machine& m) {
    serve_tick(m);
#ifdef QUILLON_CHECK_INVARIANTS
    require_invariants(m);
#endif
}

} // namespace quillon
