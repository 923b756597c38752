// SPDX-License-Identifier: MIT
// Carrying out command lines.
#include "statements/command_line.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/run_control.h"
#include "core/variables.h"
#include "statements/line_editor.h"
#include "statements/print.h"

#include <algorithm>

namespace quillon {
namespace {

/// An endless loop on a command line ends after this many statements.
constexpr int STATEMENTS_MAX = 20'000;

/// Loops and subroutines that an earlier line opened lead into a text that is gone.
void drop_typed_frames(Machine& m) {
    ProgramPosition& p = m.program;
    const auto is_typed = [](const auto& frame) { return frame.next >= TYPED; };
    const auto for_end = std::remove_if(p.for_frames.begin(), p.for_frames.begin() + p.for_depth, is_typed);
    p.for_depth = static_cast<int>(for_end - p.for_frames.begin());
    const auto gosub_end = std::remove_if(p.gosub_frames.begin(), p.gosub_frames.begin() + p.gosub_depth, is_typed);
    p.gosub_depth = static_cast<int>(gosub_end - p.gosub_frames.begin());
}

/// Puts the line on top of the history, from wherever it stood there.
void record_history(Machine& m, const BoundedText<127>& line) {
    std::size_t place = HISTORY_SIZE - 1;
    for (std::size_t slot = 0; slot < HISTORY_SIZE; ++slot) {
        if (m.entry.history[slot].view() == line.view())
            place = slot;
    }
    for (; place > 0; --place)
        m.entry.history[place] = m.entry.history[place - 1];
    m.entry.history.front() = line;
    m.entry.history_index = -1;
}

/// A long text does not scroll here: the line is at once as its scroll would leave it.
void show_end_of_text(Machine& m) {
    BoundedText<DISPLAY_WIDTH + 127> text({m.screen.display_line.data(), DISPLAY_WIDTH});
    text.append(m.run.scroll.pending_print_text);
    show_text(m, text.view().substr(text.size() - DISPLAY_WIDTH));
    skip_scroll(m);
}

/// The rest of a PRINT list, item by item; nothing of it waits.
void finish_print_list(Machine& m) {
    while (!failed(m)) {
        if (m.eval.stmt_kind == KIND_SCROLL)
            show_end_of_text(m);
        keep_command_mode(m);
        if (m.eval.stmt_kind != KIND_PRINT)
            return;
        if (m.eval.token == TOKEN_COMMA)
            clear_display_line(m);
        print_statement(m);
    }
}

/// Runs the statements of the line. Returns the value of the last one.
double run_statements(Machine& m) {
    double result = 0;
    for (int count = 0; count < STATEMENTS_MAX; ++count) {
        if (m.run.item_printed && peek_token(m) == TOKEN_PRINT)
            clear_display_line(m); // of what an earlier PRINT has shown
        m.eval.value.complete = false;
        result = eval_statement(m);
        if (failed(m))
            break;
        if (m.run.run_state == STATE_PRINT_WAIT || m.eval.stmt_kind == KIND_PRINT || m.eval.stmt_kind == KIND_SCROLL) {
            finish_print_list(m);
            m.eval.operand_done = false;
        }
        if (failed(m) || m.eval.token == TOKEN_END || m.eval.stmt_kind == KIND_PROMPT)
            break;
    }
    return result;
}

/// Shows the value of the line; when it is a number it is the answer.
void show_result(Machine& m) {
    clear_display(m);
    if (value_type(m) == TYPE_NUMBER)
        m.entry.last_result = m.eval.value.number;
    print_value(m);
    if (failed(m))
        return;
    show_result_until_key(m);
}

/// What the line leaves on the display: a prompt, a value, or what it printed, which stays until EXE.
void show_outcome(Machine& m) {
    if (m.eval.stmt_kind == KIND_PROMPT)
        return drop_rest_of_line(m);
    m.screen.display_cursor = 0;
    if (failed(m) || m.run.run_state != STATE_COMMAND)
        return;
    if (m.eval.operand_done)
        show_result(m);
    else if (m.run.item_printed)
        show_output_until_exe(m);
}

void run_line(Machine& m, const BoundedText<127>& line) {
    const int area = m.program.cur_area;
    const int line_index = m.program.cur_line;
    m.entry.saved_next = m.eval.next;
    set_typed_line(m.entry.typed, line);
    m.eval.next = TYPED;
    m.eval.stmt_kind = KIND_NONE;
    m.eval.operand_done = false;
    m.run.item_printed = false;
    const bool program_stopped = m.run.base_state == STATE_RUN;
    m.entry.last_result = run_statements(m);
    m.eval.next = m.entry.saved_next;
    const bool program_started = m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_NONE;
    if (program_stopped && m.run.base_state == STATE_RUN && !program_started) { // it stays where it was
        m.program.cur_area = area;
        m.program.cur_line = line_index;
    }
    show_outcome(m);
}

} // namespace

void command_entry_tick(Machine& m) {
    if (!m.keys.enter_request)
        return edit_line(m);
    const BoundedText<127> line = m.entry.entry_line.text;
    clear_entry_line(m);
    m.keys.key_string.clear();
    drop_typed_frames(m);
    if (line.empty())
        return leave_empty_line(m);
    record_history(m, line);
    run_line(m, line);
}

} // namespace quillon
