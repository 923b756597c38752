// SPDX-License-Identifier: MIT
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
    m.eval.stmt_kind = KIND_JUMP;
    jump_behind_then(m);
    if (failed(m))
        return true;
    if (m.eval.token != TOKEN_COLON)
        return false;
    m.eval.stmt_kind = KIND_NONE;
    return true;
}

} // namespace

void if_statement(Machine& m) {
    const bool holds = eval_statement(m) != 0;
    if (failed(m))
        return;
    const TokenIndex after = m.eval.next;
    const bool with_then = m.eval.token == TOKEN_THEN;
    if (!with_then && m.eval.token != TOKEN_SEMICOLON)
        return raise_token_error(m, MESSAGE_IF_SYNTAX, m.eval.token);
    if (!holds) {
        m.eval.token = TOKEN_END; // the rest of the line is skipped
        m.eval.stmt_kind = with_then ? m.eval.stmt_kind : KIND_NONE;
        return;
    }
    if (with_then && jumped_behind_then(m))
        return;
    m.eval.stmt_kind = KIND_NONE;
    m.eval.token = TOKEN_COLON; // what follows is the next statement
    m.eval.next = after;
}

} // namespace quillon
