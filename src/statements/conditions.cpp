// IF: the rest of the line runs, is jumped from, or is skipped.
#include "statements/conditions.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "statements/jumps.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_IF_SYNTAX{"IF", 0};

/// THEN with a number, a variable or a "#" is a jump; true when it was made or failed. A statement word is not tried.
bool jumped_behind_then(Machine& m) {
    if (peek_token(m) >= STATEMENT_WORD)
        return false;
    m.stmt_kind = KIND_JUMP;
    jump_behind_then(m);
    if (m.error_code != ERROR_NONE)
        return true;
    if (m.token != TOKEN_COLON)
        return false;
    m.stmt_kind = KIND_NONE;
    return true;
}

} // namespace

void if_statement(Machine& m) {
    const bool holds = eval_statement(m) != 0;
    if (m.error_code != ERROR_NONE)
        return;
    const char* behind = m.scan_ptr;
    const bool with_then = m.token == TOKEN_THEN;
    if (!with_then && m.token != ';')
        return raise_token_error(m, MESSAGE_IF_SYNTAX, m.token);
    if (!holds) {
        m.token = TOKEN_END; // the rest of the line is skipped
        m.stmt_kind = with_then ? m.stmt_kind : KIND_NONE;
        return;
    }
    if (with_then && jumped_behind_then(m))
        return;
    m.stmt_kind = KIND_NONE;
    m.token = TOKEN_COLON; // what follows is the next statement
    m.scan_ptr = behind;
}

} // namespace quillon
