// Program commands.
#include "statements/program.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/scanner.h"

namespace quillon {

void stop_statement(Machine& m) {
    enter_state(m, STATE_STOPPED);
    m.saved_token = m.token;
    m.saved_stmt_kind = m.stmt_kind;
    m.saved_run_state = m.base_state;
}

void end_statement(Machine& m) { enter_state(m, STATE_ENDED); }

void command_statement(Machine& m) {
    enter_state(m, STATE_COMMAND);
    m.base_state = STATE_COMMAND;
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
