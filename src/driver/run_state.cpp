// SPDX-License-Identifier: MIT
// STATE_RUN: one statement, or one step of the wait that the statement context names.
#include "driver/run_state.h"

#include "core/display_line.h"
#include "core/interpreter.h"
#include "core/program.h"
#include "core/run_control.h"
#include "statements/input.h"
#include "statements/print.h"

#include <algorithm>

namespace quillon {
namespace {

/// A scrolled text leaves its last characters at the front of the line.
void keep_end_of_line(Machine& m) {
    const int from = std::max(m.screen.display_cursor - DISPLAY_WIDTH, 0);
    auto& line = m.screen.display_line;
    std::copy_n(line.begin() + from, DISPLAY_WIDTH + 1, line.begin());
    m.screen.display_cursor = DISPLAY_WIDTH;
}

/// EXE lets the rest of the text in at once.
void serve_scroll(Machine& m) {
    set_wait(m, m.settings.wait_print_sc);
    bool pending = scroll_step(m);
    while (pending && m.keys.enter_request)
        pending = scroll_step(m);
    m.keys.enter_request = false;
    if (!pending)
        keep_end_of_line(m);
}

/// In single steps a statement waits until it is asked for; the trace window shows it once. True when it waits.
bool waits_for_step(Machine& m) {
    if (!m.trace.trace_mode || m.run.base_state == STATE_COMMAND)
        return false;
    if (m.trace.trace_step_flag) {
        m.around->host.refresh_trace();
        m.trace.trace_step_flag = false;
    }
    if (!m.keys.enter_request && !m.trace.trace_step_request)
        return true;
    m.keys.enter_request = false;
    m.trace.trace_step_request = false;
    m.trace.trace_step_flag = true;
    return false;
}

void serve_statement(Machine& m) {
    if (waits_for_step(m))
        return;
    m.eval.stmt_kind = KIND_NONE;
    set_wait(m, 0);
    if (m.run.program_ended || m.program.stmt_start == NOWHERE)
        return end_program(m);
    m.eval.value.complete = false;
    eval_statement(m);
    if (m.eval.token == TOKEN_END && !failed(m))
        advance_line(m);
}

void serve_input(Machine& m) {
    input_statement(m);
    if (m.trace.trace_mode) {
        m.around->host.refresh_trace();
        m.trace.trace_step_flag = false;
    }
    m.keys.enter_request = false;
}

bool key_down(const Machine& m) { return m.keys.held_key != 0 || m.soft.soft_key_code != 0; }

/// A result, or READY: EXE leads back to the command line, any key begins one.
void serve_result(Machine& m) {
    if (m.keys.enter_request)
        return end_result(m);
    if (!key_down(m))
        return;
    if (static_cast<MachineKey>(m.keys.key_string[0]) == KEY_COPY) {
        m.around->host.copy_text(m.eval.value.text);
        m.keys.key_string.clear();
    }
    begin_line_after_result(m);
}

void serve_kind(Machine& m) {
    switch (m.eval.stmt_kind) {
    case KIND_PRINT:
        set_wait(m, 0);
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
    if (m.eval.stmt_kind == KIND_SCROLL && m.keys.enter_request)
        set_wait(m, 0);
    if (m.run.scroll.wait_counter > 0) {
        set_wait(m, m.run.scroll.wait_counter - 1);
        return;
    }
    if (m.program.stmt_start != NOWHERE)
        m.eval.next = m.program.stmt_start;
    serve_kind(m);
    if (!failed(m))
        m.program.stmt_start = m.eval.next;
}

} // namespace quillon
