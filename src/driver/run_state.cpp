// STATE_RUN: one statement, or one step of the wait that the statement context names.
#include "driver/run_state.h"

#include "core/display_line.h"
#include "core/interpreter.h"
#include "core/listing.h"
#include "driver/tick.h"
#include "statements/input.h"
#include "statements/print.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

/// A scrolled text leaves its last characters at the front of the line.
void keep_end_of_line(Machine& m) {
    const int from = std::max(m.display_cursor - DISPLAY_WIDTH, 0);
    std::memmove(m.display_line, m.display_line + from, DISPLAY_WIDTH + 1);
    m.display_cursor = DISPLAY_WIDTH;
}

/// EXE lets the rest of the text in at once.
void serve_scroll(Machine& m) {
    m.wait_counter = m.wait_print_sc;
    bool pending = print_scroll_step(m);
    while (pending && m.enter_request != 0)
        pending = print_scroll_step(m);
    m.enter_request = 0;
    if (!pending)
        keep_end_of_line(m);
}

/// In single steps a statement waits until it is asked for; the trace window shows it once. True when it waits.
bool waits_for_step(Machine& m) {
    if (m.trace_mode == 0 || m.base_state == STATE_COMMAND)
        return false;
    if (m.trace_step_flag != 0) {
        m.host.refresh_trace();
        m.trace_step_flag = 0;
    }
    if (m.enter_request == 0 && m.trace_step_request == 0)
        return true;
    m.enter_request = 0;
    m.trace_step_request = 0;
    m.trace_step_flag = 1;
    return false;
}

/// The last line has been passed: straight to command mode when the last thing was a wait for EXE.
void end_program(Machine& m) {
    m.program_ended = 0;
    enter_state(m, m.prev_state == STATE_PRINT_WAIT ? STATE_TO_COMMAND : STATE_ENDED);
}

void serve_statement(Machine& m) {
    if (waits_for_step(m))
        return;
    m.stmt_kind = KIND_NONE;
    m.wait_counter = 0;
    if (m.program_ended != 0 || m.stmt_start == nullptr)
        return end_program(m);
    m.value.complete = 0;
    eval_statement(m);
    if (m.token == TOKEN_END && m.error_code == ERROR_NONE)
        advance_line(m);
}

void serve_input(Machine& m) {
    input_statement(m);
    if (m.trace_mode != 0) {
        m.host.refresh_trace();
        m.trace_step_flag = 0;
    }
    m.enter_request = 0;
}

bool key_down(const Machine& m) { return m.held_key != 0 || m.soft_key_code != 0; }

/// A result, or READY: EXE leads back to the command line, any key begins one.
void serve_result(Machine& m) {
    if (m.enter_request != 0) {
        clear_display_line(m);
        enter_state(m, STATE_COMMAND);
        resume_statement(m);
    } else if (key_down(m)) {
        if (m.key_string[0] == KEY_COPY) {
            m.host.copy_text(m.value.text);
            m.key_string.clear();
        }
        enter_command_mode(m);
    }
}

void serve_kind(Machine& m) {
    switch (m.stmt_kind) {
    case KIND_PRINT:
        m.wait_counter = 0;
        print_statement(m);
        break;
    case KIND_INPUT: serve_input(m); break;
    case KIND_SCROLL: serve_scroll(m); break;
    case KIND_PROMPT:
        if (key_down(m))
            begin_entry(m);
        break;
    case KIND_INPUT_ERROR:
        if (key_down(m))
            prompt_again(m);
        break;
    case KIND_PROMPT_AGAIN: prompt_again(m); break;
    case KIND_RESULT: serve_result(m); break;
    default: serve_statement(m);
    }
}

} // namespace

void tick_run(Machine& m) {
    if (m.stmt_kind == KIND_SCROLL && m.enter_request != 0)
        m.wait_counter = 0;
    if (m.wait_counter > 0) {
        --m.wait_counter;
        return;
    }
    if (m.stmt_start != nullptr)
        m.scan_ptr = m.stmt_start;
    serve_kind(m);
    if (m.error_code == ERROR_NONE)
        m.stmt_start = m.scan_ptr;
}

} // namespace quillon
