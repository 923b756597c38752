// Program commands.
#include "statements/program.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/listing.h"
#include "core/numbers.h"
#include "core/scanner.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_RUN_ARGUMENT{"RUN", 0};
constexpr MessageId MESSAGE_RUN_NO_LINE{"RUN", 1};

/// Where RUN starts.
enum class RunStart { FAILED, AREA, LINE };

/// Reads what follows RUN: nothing, or the number of a line of the current area, which becomes the start.
RunStart run_argument(Machine& m) {
    const int token = next_token(m);
    if (is_statement_end(token))
        return RunStart::AREA;
    if (token != TOKEN_NUMBER) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_RUN_ARGUMENT);
        return RunStart::FAILED;
    }
    const int number = truncate_to_int(m.value.number);
    const int line = find_line(m, number);
    if (line < 0) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_RUN_NO_LINE, "[%d]", number);
        return RunStart::FAILED;
    }
    m.cur_line = line;
    m.stmt_start = m.areas[static_cast<std::size_t>(m.cur_area)].lines[static_cast<std::size_t>(line)].text;
    return RunStart::LINE;
}

/// The selected area holds no program: command mode, and no error for it.
void stay_in_command_mode(Machine& m) {
    clear_entry_line(m);
    m.error_detail.clear();
    m.error_code = ERROR_NONE;
    m.stmt_kind = KIND_NONE;
    m.base_state = STATE_COMMAND;
    enter_state(m, STATE_COMMAND);
}

} // namespace

void run_statement(Machine& m) {
    const bool typed = m.run_state == STATE_COMMAND;
    const RunStart start = run_argument(m);
    if (start == RunStart::FAILED || m.error_code != ERROR_NONE)
        return;
    if (start == RunStart::AREA) {
        m.error_detail.clear();
        reset_machine(m);
        select_area(m, m.run_page);
        restore_area_data(m);
    }
    m.token = typed ? TOKEN_END : TOKEN_COLON; // a program goes on at its new place at once
    if (m.stmt_start == nullptr)
        return stay_in_command_mode(m);
    clear_run_marks(m);
    clear_stacks(m);
    m.prev_state = STATE_RUN;
    m.base_state = STATE_RUN;
    m.run_state = STATE_RUN;
    m.stmt_kind = KIND_NONE;
    m.scan_ptr = m.stmt_start;
    m.saved_scan_ptr = m.stmt_start; // where the command line's end leaves the scanner
    restore_area_data(m);
}

void vac_statement(Machine& m) {
    clear_variables(m);
    if (m.trace_mode != 0)
        m.host.reset_trace();
    next_token(m);
}

void stop_statement(Machine& m) {
    enter_state(m, STATE_STOPPED);
    save_stop(m);
    m.saved_run_state = m.base_state;
}

void end_statement(Machine& m) { enter_state(m, STATE_ENDED); }

void command_statement(Machine& m) {
    enter_state(m, STATE_COMMAND);
    m.base_state = STATE_COMMAND;
    clear_entry_line(m);
    m.token = TOKEN_END_WORD; // ends the statement as END does
}

void rem_statement(Machine& m) { m.token = TOKEN_END; }

void let_statement(Machine& m) {
    const int token = next_token(m);
    if (token != TOKEN_NUMVAR && token != TOKEN_STRVAR)
        return raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":';'");
    next_token_behind_operand(m);
}

void skip_statement(Machine& m) {
    bool ended_line = false;
    m.scan_ptr = skip_to_statement_end(m.scan_ptr, ended_line);
    m.prev_token = m.token;
    m.token = ended_line ? TOKEN_END : TOKEN_COLON;
}

void unsupported_statement(Machine&) {}

} // namespace quillon
