// Carrying out command lines.
#include "statements/command_line.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/variables.h"
#include "statements/line_editor.h"
#include "statements/print.h"

#include <algorithm>
#include <cstdio>

namespace quillon {
namespace {

/// An endless loop on a command line ends after this many statements.
constexpr int STATEMENTS_MAX = 20'000;

bool failed(const Machine& m) { return m.error_code != ERROR_NONE; }

bool in_command_buffer(const Machine& m, const char* text) {
    const char* begin = m.command_buffer.c_str();
    return text >= begin && text <= begin + m.command_buffer.capacity();
}

/// Loops and subroutines that an earlier line opened lead into a text that is gone.
void drop_typed_frames(Machine& m) {
    const auto is_typed = [&m](const auto& frame) { return in_command_buffer(m, frame.text); };
    const auto* for_end = std::remove_if(m.for_frames, m.for_frames + m.for_depth, is_typed);
    m.for_depth = static_cast<int>(for_end - m.for_frames);
    const auto* gosub_end = std::remove_if(m.gosub_frames, m.gosub_frames + m.gosub_depth, is_typed);
    m.gosub_depth = static_cast<int>(gosub_end - m.gosub_frames);
}

/// EXE on an empty line: on with a stopped program, where there is one.
void leave_empty_line(Machine& m) {
    m.stmt_kind = KIND_NONE;
    enter_state(m, m.base_state);
    if (m.base_state == STATE_RUN && m.stopped_kind != KIND_NONE) {
        m.stmt_kind = m.stopped_kind;
        m.token = m.stopped_token;
        m.saved_token = m.stopped_token;
        m.value = m.stopped_value;
        m.entry_line = m.stopped_entry;
    }
    m.stopped_kind = KIND_NONE;
    m.enter_request = 0;
}

/// Puts the line on top of the history, from wherever it stood there.
void record_history(Machine& m, const BoundedText<127>& line) {
    std::size_t place = HISTORY_SIZE - 1;
    for (std::size_t slot = 0; slot < HISTORY_SIZE; ++slot) {
        if (m.history[slot].view() == line.view())
            place = slot;
    }
    for (; place > 0; --place)
        m.history[place] = m.history[place - 1];
    m.history.front() = line;
    m.history_index = -1;
}

/// A long text does not scroll here: the line is at once as its scroll would leave it.
void show_end_of_text(Machine& m) {
    BoundedText<DISPLAY_WIDTH + 127> text({m.display_line, DISPLAY_WIDTH});
    text.append(m.pending_print_text);
    show_text(m, text.view().substr(text.size() - DISPLAY_WIDTH));
    m.pending_print_text.clear();
    m.wait_counter = 0;
    m.stmt_kind = m.kind_after_scroll;
    m.kind_after_scroll = KIND_NONE;
    m.state_after_scroll = m.base_state;
}

/// The rest of a PRINT list, item by item; nothing of it waits.
void finish_print_list(Machine& m) {
    while (!failed(m)) {
        if (m.stmt_kind == KIND_SCROLL)
            show_end_of_text(m);
        m.run_state = STATE_COMMAND;
        if (m.stmt_kind != KIND_PRINT)
            return;
        if (m.token == ',')
            clear_display_line(m);
        print_statement(m);
    }
}

/// Runs the statements of the line. Returns the value of the last one.
double run_statements(Machine& m) {
    double result = 0;
    for (int count = 0; count < STATEMENTS_MAX; ++count) {
        if (m.item_printed != 0 && peek_token(m) == TOKEN_PRINT)
            clear_display_line(m); // of what an earlier PRINT has shown
        m.value.complete = 0;
        result = eval_statement(m);
        if (failed(m))
            break;
        if (m.run_state == STATE_PRINT_WAIT || m.stmt_kind == KIND_PRINT || m.stmt_kind == KIND_SCROLL) {
            finish_print_list(m);
            m.operand_done = 0;
        }
        if (failed(m) || m.token == TOKEN_END || m.stmt_kind == KIND_PROMPT)
            break;
    }
    return result;
}

/// Shows the value of the line; when it is a number it is the answer.
void show_result(Machine& m) {
    clear_display(m);
    if (value_type(m.value) == TYPE_NUMBER)
        m.last_result = m.value.number;
    print_value(m);
    if (failed(m))
        return;
    enter_state(m, STATE_RUN);
    m.stmt_kind = KIND_RESULT;
}

/// What the line leaves on the display: a prompt, a value, or what it printed, which stays until EXE.
void show_outcome(Machine& m) {
    if (m.stmt_kind == KIND_PROMPT) {
        m.typed_wait = 1;
        m.saved_token = TOKEN_END; // whatever stands behind the INPUT is dropped
        return;
    }
    m.display_cursor = 0;
    if (failed(m) || m.run_state != STATE_COMMAND)
        return;
    if (m.operand_done != 0) {
        show_result(m);
    } else if (m.item_printed != 0) {
        enter_state(m, STATE_PRINT_WAIT);
        m.typed_wait = 1;
        m.saved_token = TOKEN_END;
        m.saved_stmt_kind = KIND_NONE;
        m.kind_after_scroll = KIND_NONE;
    }
}

void run_line(Machine& m, const BoundedText<127>& line) {
    const int area = m.cur_area;
    const int line_index = m.cur_line;
    m.saved_scan_ptr = m.scan_ptr;
    m.command_buffer = line;
    m.scan_ptr = m.command_buffer.c_str();
    m.stmt_kind = KIND_NONE;
    m.operand_done = 0;
    m.item_printed = 0;
    const bool program_stopped = m.base_state == STATE_RUN;
    m.last_result = run_statements(m);
    m.scan_ptr = m.saved_scan_ptr;
    const bool program_started = m.run_state == STATE_RUN && m.stmt_kind == KIND_NONE;
    if (program_stopped && m.base_state == STATE_RUN && !program_started) { // it stays where it was
        m.cur_area = area;
        m.cur_line = line_index;
    }
    show_outcome(m);
}

} // namespace

void begin_command_mode(Machine& m) {
    clear_run_marks(m);
    m.error_detail.clear();
    m.error_code = ERROR_NONE;
    m.prev_state = STATE_RUN;
    m.base_state = STATE_COMMAND;
    m.run_state = STATE_RUN;
    m.stmt_kind = KIND_RESULT;
    clear_entry_line(m);
    m.history_index = -1;
    char text[16];
    std::snprintf(text, sizeof text, "READY P%1d", m.run_page);
    show_text(m, text);
}

void command_entry_tick(Machine& m) {
    if (m.enter_request == 0)
        return edit_line(m);
    const BoundedText<127> line = m.entry_line.text;
    clear_entry_line(m);
    m.key_string.clear();
    drop_typed_frames(m);
    if (line.empty())
        return leave_empty_line(m);
    record_history(m, line);
    run_line(m, line);
}

} // namespace quillon
