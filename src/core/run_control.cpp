// SPDX-License-Identifier: MIT
// The changes of the run state, each as its verb.
#include "core/run_control.h"

#include "core/controls.h"
#include "core/display_line.h"
#include "core/errors.h"
#include "core/program.h"
#include "core/variables.h"

#include <algorithm>
#include <cstdio>

namespace quillon {
namespace {

void enter_state(Machine& m, RunState state) {
    m.run.prev_state = m.run.run_state;
    m.run.run_state = state;
}

/// The context in which a statement goes on: an INPUT asks again.
StmtKind resumed_kind(StmtKind kind) {
    const bool input = kind == KIND_INPUT || kind == KIND_INPUT_ERROR || kind == KIND_PROMPT;
    return input ? KIND_PROMPT_AGAIN : kind;
}

/// The same after a stop: an INPUT that was between two elements of its list goes on with the list.
StmtKind resumed_stop_kind(const Machine& m) {
    const StmtKind kind = m.run.resume.saved_stmt_kind;
    const bool between_elements = kind == KIND_INPUT && m.run.saved_run_state == STATE_RUN;
    return between_elements ? KIND_INPUT : resumed_kind(kind);
}

/// Saves where a statement is, for when the machine goes on after a stop.
void save_stop(Machine& m) {
    save_position(m);
    m.run.resume.value = m.eval.value;
}

/// What the program was doing when it was stopped, for EXE on an empty command line. A scroll counts as done: its text
/// will be gone.
void remember_stop(Machine& m) {
    const bool scrolling = m.run.resume.saved_stmt_kind == KIND_SCROLL;
    m.run.stopped.resume = m.run.resume;
    m.run.stopped.resume.saved_stmt_kind = scrolling ? m.run.scroll.kind_after_scroll : resumed_stop_kind(m);
    m.run.stopped.entry = m.entry.entry_line;
}

/// A program that is stopped below the command line is where it was, its own statement the current one.
void take_stopped(Machine& m) {
    m.eval.token = m.run.stopped.resume.saved_token;
    m.eval.stmt_kind = m.run.stopped.resume.saved_stmt_kind;
    m.eval.value = m.run.stopped.resume.value;
    m.entry.entry_line = m.run.stopped.entry;
}

/// Clears what a run leaves behind for its next tick: the end of the program, waits, scrolls, saved contexts.
void clear_run_marks(Machine& m) {
    m.run.program_ended = false;
    m.run.typed_wait = false;
    m.run.resume.saved_token = TOKEN_UNKNOWN;
    m.run.resume.saved_stmt_kind = KIND_NONE;
    m.run.scroll.state_after_scroll = STATE_RUN;
    m.run.scroll.kind_after_scroll = KIND_NONE;
    m.run.scroll.wait_counter = 0;
    m.run.stopped.resume.saved_token = TOKEN_UNKNOWN;
    m.run.stopped.resume.saved_stmt_kind = KIND_NONE;
    m.screen.print_clear_pending = false;
}

void clear_stacks(Machine& m) {
    m.program.for_depth = 0;
    m.program.gosub_depth = 0;
    m.program.for_frames.fill(ForFrame{});
    m.program.gosub_frames.fill(GosubFrame{});
}

void open_line(Machine& m) {
    m.eval.stmt_kind = KIND_CLEARED;
    clear_entry_line(m); // of an INPUT that was stopped, or the last one of a program
    enter_state(m, STATE_COMMAND);
}

/// An area without a program leads to command mode, and is no error.
void open_line_for_empty_area(Machine& m) {
    clear_entry_line(m);
    m.error.error_detail.clear();
    m.error.error_code = ERROR_NONE;
    m.eval.stmt_kind = KIND_NONE;
    m.run.base_state = STATE_COMMAND;
    m.run.run_state = STATE_COMMAND;
}

/// The selected area from its beginning, after a reset.
void select_from_start(Machine& m) {
    m.error.error_detail.clear();
    reset_machine(m);
    select_area(m, m.settings.run_page);
    restore_area_data(m);
}

void show_question_mark(Machine& m) { put_display_text(m, m.screen.display_cursor, "?"); }

/// A cell takes on the type of what will be entered.
void prepare_cell(Variable& cell, bool for_string) {
    if (for_string && cell.kind != CELL_STRING)
        store_string(cell, {});
    else if (!for_string && cell.kind != CELL_NUMBER)
        store_number(cell, cell.number);
}

/// The place of the program, or of its last line once that has been passed.
void show_position(Machine& m) {
    const int last_line = static_cast<int>(current_area(m).lines.size()) - 1;
    char text[32];
    std::snprintf(text, sizeof text, "P%d-%d", m.program.cur_area,
                  line_number(m, std::min(m.program.cur_line, last_line)));
    show_text(m, text);
    m.run.run_state = STATE_LINE_SHOWN;
}

} // namespace

// What a statement asks for.

void wait_for_exe(Machine& m) { enter_state(m, STATE_PRINT_WAIT); }

void wait_for_exe_at_end(Machine& m) {
    m.run.run_state = STATE_PRINT_WAIT;
    m.run.scroll.kind_after_scroll = KIND_NONE;
    m.eval.stmt_kind = KIND_NONE;
}

void start_scroll(Machine& m, int ticks, RunState state_after, StmtKind kind_after) {
    m.run.scroll.wait_counter = ticks;
    m.run.scroll.state_after_scroll = state_after;
    m.run.scroll.kind_after_scroll = kind_after;
    m.eval.stmt_kind = KIND_SCROLL;
}

void end_print_without_wait(Machine& m) {
    m.eval.stmt_kind = KIND_NONE;
    m.run.prev_state = m.run.run_state;
}

void ask(Machine& m) {
    show_question_mark(m);
    prepare_cell(cell_at(m, m.eval.value.cell), m.eval.value.kind == VALUE_STRVAR);
    m.entry.entry_line = m.eval.value;
    m.entry.entry_line.text.clear();
    enter_state(m, STATE_RUN);
    m.eval.stmt_kind = KIND_PROMPT;
}

void end_input(Machine& m) {
    enter_state(m, m.run.base_state);
    m.eval.stmt_kind = KIND_NONE;
}

void stop_at_statement(Machine& m) {
    enter_state(m, STATE_STOPPED);
    save_stop(m);
    m.run.saved_run_state = m.run.base_state;
}

void end_at_statement(Machine& m) { enter_state(m, STATE_ENDED); }

void leave_for_command_mode(Machine& m) {
    enter_state(m, STATE_COMMAND);
    m.run.base_state = STATE_COMMAND;
    clear_entry_line(m);
}

void finish_jump(Machine& m) {
    m.eval.value.kind = VALUE_NONE;
    m.eval.stmt_kind = KIND_NONE;
    m.eval.token = TOKEN_COLON;
}

void enter_area(Machine& m, bool by_call) {
    if (by_call)
        m.run.run_state = m.run.base_state;
    else
        enter_state(m, m.run.base_state);
}

void end_at_empty_area(Machine& m) {
    enter_state(m, STATE_ENDED);
    m.eval.token = TOKEN_COLON;
}

void run_from_line(Machine& m) {
    clear_run_marks(m);
    clear_stacks(m);
    m.run.prev_state = STATE_RUN;
    m.run.base_state = STATE_RUN;
    m.run.run_state = STATE_RUN;
    m.eval.stmt_kind = KIND_NONE;
    m.eval.next = m.program.stmt_start;
    m.entry.saved_next = m.program.stmt_start; // where the command line's end leaves the interpreter
    restore_area_data(m);
}

void run_area(Machine& m) {
    select_from_start(m);
    if (m.program.stmt_start != NOWHERE)
        return run_from_line(m);
    m.run.prev_state = m.run.run_state;
    open_line_for_empty_area(m);
}

void set_wait(Machine& m, int ticks) { m.run.scroll.wait_counter = ticks; }

void save_position(Machine& m) {
    m.run.resume.saved_stmt_kind = m.eval.stmt_kind;
    m.run.resume.saved_token = m.eval.token;
}

// What errors ask for.

void enter_error_state(Machine& m, ErrorCode code) {
    m.error.error_code = code;
    if (code == ERROR_INPUT) {
        m.eval.stmt_kind = KIND_INPUT_ERROR;
        enter_state(m, STATE_RUN);
    } else {
        enter_state(m, m.run.run_state == STATE_COMMAND ? STATE_COMMAND_ERROR : STATE_ENDED);
    }
}

// What the tick serves.

bool scroll_step(Machine& m) {
    if (put_display_text(m, m.screen.display_cursor, m.run.scroll.pending_print_text) == PutResult::PENDING)
        return true;
    m.eval.stmt_kind = m.run.scroll.kind_after_scroll;
    m.run.resume.saved_stmt_kind = KIND_PRINT; // a stop has saved the scroll in its place
    m.run.resume.saved_token = m.eval.token;
    m.run.scroll.kind_after_scroll = KIND_NONE;
    enter_state(m, m.run.scroll.state_after_scroll);
    m.run.scroll.state_after_scroll = m.run.base_state;
    return false;
}

void end_wait_for_exe(Machine& m) {
    clear_display_line(m);
    enter_state(m, m.run.typed_wait ? STATE_COMMAND : m.run.base_state);
    m.run.typed_wait = false;
    m.screen.display_offset = 0;
    m.run.scroll.wait_counter = 0;
    m.eval.token = m.run.resume.saved_token;
    m.eval.stmt_kind =
        is_statement_end(m.eval.token) ? m.run.scroll.kind_after_scroll : resumed_kind(m.run.resume.saved_stmt_kind);
}

void resume(Machine& m) {
    clear_display_line(m);
    enter_state(m, m.run.base_state);
    m.eval.token = m.run.resume.saved_token;
    m.eval.stmt_kind = resumed_stop_kind(m);
    m.eval.value = m.run.resume.value;
    if (m.run.base_state == STATE_COMMAND)
        clear_entry_line(m);
}

void begin_entry(Machine& m) {
    m.eval.stmt_kind = KIND_INPUT;
    clear_display_line(m);
    enter_state(m, STATE_INPUT);
    m.keys.enter_request = false;
    m.entry.prev_key_string.clear(); // the key that began the entry is a new one, though it may have ended the last one
}

void prompt_again(Machine& m) {
    m.eval.stmt_kind = KIND_PROMPT;
    clear_display_line(m);
    show_question_mark(m);
    clear_key(m);
    m.soft.soft_key_code = 0;
    m.entry.entry_line.text.clear();
    m.error.error_code = ERROR_NONE;
    m.keys.enter_request = false;
}

void refuse_entry(Machine& m) {
    m.error.error_code = ERROR_NONE;
    m.run.run_state = STATE_INPUT;
}

void return_to_prompt(Machine& m) {
    clear_display(m);
    show_question_mark(m);
    enter_state(m, STATE_RUN);
    m.eval.stmt_kind = KIND_PROMPT;
}

void finish_entry(Machine& m) {
    clear_display_line(m);
    m.keys.key_string.clear();
    if (m.run.typed_wait)
        clear_entry_line(m);
    enter_state(m, m.run.typed_wait ? STATE_COMMAND : m.run.base_state);
    m.run.typed_wait = false;
    m.eval.token = m.run.resume.saved_token;
    m.eval.stmt_kind = m.eval.token == TOKEN_END ? KIND_NONE : KIND_INPUT;
}

void end_program(Machine& m) {
    m.run.program_ended = false;
    enter_state(m, m.run.prev_state == STATE_PRINT_WAIT ? STATE_TO_COMMAND : STATE_ENDED);
}

void open_command_line_while_stopped(Machine& m) {
    remember_stop(m);
    open_line(m);
}

void open_command_line(Machine& m) {
    open_line(m);
    m.run.base_state = STATE_COMMAND;
}

void clear_command_error(Machine& m) {
    enter_state(m, STATE_COMMAND);
    clear_entry_line(m);
    clear_key(m);
    m.soft.soft_key_code = 0;
    m.error.error_code = ERROR_NONE;
}

void end_result(Machine& m) {
    clear_display_line(m);
    enter_state(m, STATE_COMMAND);
    m.eval.token = m.run.resume.saved_token;
    m.eval.stmt_kind = resumed_kind(m.run.resume.saved_stmt_kind);
}

void begin_line_after_result(Machine& m) { open_line(m); }

// What a command line asks for.

void keep_command_mode(Machine& m) { m.run.run_state = STATE_COMMAND; }

void skip_scroll(Machine& m) {
    m.run.scroll.pending_print_text.clear();
    m.run.scroll.wait_counter = 0;
    m.eval.stmt_kind = m.run.scroll.kind_after_scroll;
    m.run.scroll.kind_after_scroll = KIND_NONE;
    m.run.scroll.state_after_scroll = m.run.base_state;
}

void show_result_until_key(Machine& m) {
    enter_state(m, STATE_RUN);
    m.eval.stmt_kind = KIND_RESULT;
}

void show_output_until_exe(Machine& m) {
    enter_state(m, STATE_PRINT_WAIT);
    m.run.typed_wait = true;
    m.run.resume.saved_token = TOKEN_END;
    m.run.resume.saved_stmt_kind = KIND_NONE;
    m.run.scroll.kind_after_scroll = KIND_NONE;
}

void drop_rest_of_line(Machine& m) {
    m.run.typed_wait = true;
    m.run.resume.saved_token = TOKEN_END;
}

void leave_empty_line(Machine& m) {
    m.eval.stmt_kind = KIND_NONE;
    enter_state(m, m.run.base_state);
    if (m.run.base_state == STATE_RUN && m.run.stopped.resume.saved_stmt_kind != KIND_NONE) {
        take_stopped(m);
        m.run.resume.saved_token = m.eval.token;
    }
    m.run.stopped.resume.saved_stmt_kind = KIND_NONE;
    m.keys.enter_request = false;
}

// What a host tells the machine.

void reset_machine(Machine& m) {
    m.error.error_code = ERROR_NONE;
    clear_display_line(m);
    m.screen.display_offset = 0;
    m.screen.print_mode = false;
    m.run.prev_state = STATE_RUN;
    m.run.run_state = STATE_SELECT;
    m.program.cur_area = 0;
    m.program.cur_line = 0;
    m.program.stmt_start = NOWHERE;
    m.eval.token_start = NOWHERE;
    clear_stacks(m);
    clear_run_marks(m);
}

void start_area(Machine& m) {
    select_from_start(m);
    m.run.prev_state = m.run.run_state;
    if (m.program.stmt_start == NOWHERE)
        return open_line_for_empty_area(m);
    m.eval.stmt_kind = KIND_NONE;
    m.eval.next = m.program.stmt_start;
    m.run.base_state = STATE_RUN;
    m.run.run_state = STATE_RUN;
    if (m.trace.trace_mode)
        m.around->host.refresh_trace();
}

void run_on(Machine& m) {
    enter_state(m, m.run.saved_run_state);
    clear_display(m);
}

void stop(Machine& m) {
    const RunState state = m.run.run_state;
    const bool nothing_runs =
        state == STATE_ENDED || state == STATE_SELECT || state == STATE_COMMAND || state == STATE_LINE_SHOWN;
    if (m.listing->text.empty() || nothing_runs)
        return;
    const bool typed = m.run.typed_wait || (state == STATE_RUN && m.eval.stmt_kind == KIND_RESULT);
    if (typed) { // what a command line waits for is over, and a program that is stopped below it is where it was
        m.run.typed_wait = false;
        take_stopped(m);
        m.entry.entry_line.text.clear();
    }
    save_stop(m);
    m.run.prev_state = state;
    if (state == STATE_STOPPED || state == STATE_PRINT_WAIT)
        return show_position(m);
    m.run.saved_run_state = typed ? m.run.base_state : state;
    m.run.run_state = STATE_STOPPED;
}

void begin_command_mode(Machine& m) {
    clear_run_marks(m);
    m.error.error_detail.clear();
    m.error.error_code = ERROR_NONE;
    m.run.prev_state = STATE_RUN;
    m.run.base_state = STATE_COMMAND;
    m.run.run_state = STATE_RUN;
    m.eval.stmt_kind = KIND_RESULT;
    clear_entry_line(m);
    m.entry.history_index = -1;
    char text[16];
    std::snprintf(text, sizeof text, "READY P%1d", m.settings.run_page);
    show_text(m, text);
}

} // namespace quillon
