// SPDX-License-Identifier: MIT
// Program commands.
#include "statements/program.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program.h"
#include "core/run_control.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_RUN_ARGUMENT{"RUN", 0};
constexpr MessageId MESSAGE_RUN_NO_LINE{"RUN", 1};

/// Where RUN starts.
enum class RunStart { FAILED, AREA, LINE };

/// Reads what follows RUN: nothing, or the number of a line of the current area, which becomes the start.
RunStart run_argument(Machine& m) {
    const TokenCode token = next_token(m);
    if (is_statement_end(token))
        return RunStart::AREA;
    if (token != TOKEN_NUMBER) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_RUN_ARGUMENT);
        return RunStart::FAILED;
    }
    const int number = truncate_to_int(m.eval.value.number);
    const int line = find_line(*m.listing, m.program.cur_area, number);
    if (line < 0) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_RUN_NO_LINE, "[%d]", number);
        return RunStart::FAILED;
    }
    m.program.cur_line = line;
    m.program.stmt_start = line_start(m, line);
    return RunStart::LINE;
}

} // namespace

void run_statement(Machine& m) {
    const bool typed = m.run.run_state == STATE_COMMAND;
    const RunStart start = run_argument(m);
    if (start == RunStart::FAILED || failed(m))
        return;
    if (start == RunStart::AREA)
        run_area(m);
    else
        run_from_line(m);
    m.eval.token = typed ? TOKEN_END : TOKEN_COLON; // a program goes on at its new place at once
}

void vac_statement(Machine& m) {
    clear_variables(m);
    if (m.trace.trace_mode)
        m.around->host.reset_trace();
    next_token(m);
}

void stop_statement(Machine& m) { stop_at_statement(m); }

void end_statement(Machine& m) { end_at_statement(m); }

void command_statement(Machine& m) {
    leave_for_command_mode(m);
    m.eval.token = TOKEN_END_WORD; // ends the statement as END does
}

void rem_statement(Machine& m) { m.eval.token = TOKEN_END; }

void let_statement(Machine& m) {
    const TokenCode token = next_token(m);
    if (token != TOKEN_NUMVAR && token != TOKEN_STRVAR)
        return raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":';'");
    next_token_after_operand(m);
}

void skip_statement(Machine& m) { skip_statement_rest(m); }

void unsupported_statement(Machine&) {}

} // namespace quillon
