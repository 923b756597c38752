// SPDX-License-Identifier: MIT
// PRINT: one item a call.
#include "statements/print.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/number_format.h"
#include "core/run_control.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_BAD_ITEM{"PRINT", 1};
constexpr MessageId MESSAGE_TRAILING_COMMA{"PRINT", 2};

/// The item's text did not fit: the rest scrolls in, and then the list goes on as its separator says.
void scroll_rest(Machine& m, int column_before, RunState state_after, StmtKind kind_after) {
    const bool crossed_width = column_before < DISPLAY_WIDTH && m.screen.display_cursor >= DISPLAY_WIDTH;
    start_scroll(m, crossed_width ? m.settings.wait_print_sc_ini : m.settings.wait_print_sc, state_after, kind_after);
}

PutResult print_item_value(Machine& m) {
    const PutResult result = print_value(m);
    if (result != PutResult::NOTHING)
        m.run.item_printed = true;
    return result;
}

/// The item is followed by ",": after it the machine waits for EXE.
PutResult print_before_comma(Machine& m) {
    const int column = m.screen.display_cursor;
    const PutResult result = print_item_value(m);
    if (failed(m))
        return result;
    if (result == PutResult::PENDING)
        scroll_rest(m, column, STATE_PRINT_WAIT, m.eval.stmt_kind);
    else
        wait_for_exe(m);
    return result;
}

/// The item is followed by ";": the next one is written after it.
PutResult print_before_semicolon(Machine& m) {
    const int column = m.screen.display_cursor;
    const PutResult result = print_item_value(m);
    if (!failed(m) && result == PutResult::PENDING)
        scroll_rest(m, column, m.run.base_state, m.eval.stmt_kind);
    return result;
}

/// The item ends the statement; without one after a ";", the statement just ends.
PutResult print_last(Machine& m) {
    if (m.eval.prev_token == TOKEN_COMMA) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_TRAILING_COMMA);
        return PutResult::NOTHING;
    }
    if (m.eval.prev_token == TOKEN_SEMICOLON) {
        end_print_without_wait(m);
        return PutResult::NOTHING;
    }
    const int column = m.screen.display_cursor;
    const PutResult result = print_value(m);
    if (failed(m))
        return result;
    m.run.item_printed = true;
    if (result == PutResult::PENDING)
        scroll_rest(m, column, STATE_PRINT_WAIT, KIND_NONE);
    else
        wait_for_exe_at_end(m);
    return result;
}

PutResult print_item(Machine& m) {
    switch (m.eval.token) {
    case TOKEN_COMMA: return print_before_comma(m);
    case TOKEN_SEMICOLON: return print_before_semicolon(m);
    case TOKEN_COLON:
    case TOKEN_END: return print_last(m);
    default: raise_token_error(m, MESSAGE_BAD_ITEM, m.eval.token); return PutResult::NOTHING;
    }
}

/// A bare PRINT: the line stays visible until the next output clears it.
void print_nothing(Machine& m) {
    m.eval.stmt_kind = KIND_NONE;
    m.screen.print_clear_pending = true;
    m.screen.display_cursor = 0;
}

} // namespace

PutResult print_value(Machine& m) {
    NumberText text;
    return format_number(m, text) ? put_display_text(m, m.screen.display_cursor, text) : PutResult::NOTHING;
}

void print_statement(Machine& m) {
    eval_sum(m);
    if (failed(m))
        return;
    if (m.screen.print_clear_pending) {
        clear_display(m);
        m.screen.print_clear_pending = false;
    }
    save_position(m);
    if (is_statement_end(m.eval.token) && m.eval.value.kind == VALUE_NONE)
        return print_nothing(m);
    while (!failed(m)) {
        if (m.eval.token >= STATEMENT_FIRST)
            return raise_token_error(m, MESSAGE_BAD_ITEM, m.eval.token);
        save_position(m);
        const TokenCode token = m.eval.token;
        const PutResult result = print_item(m);
        if (failed(m) || result == PutResult::PENDING)
            return;
        save_position(m);
        if (is_statement_end(token) || token == TOKEN_COMMA || result != PutResult::NOTHING)
            return;
        eval_sum(m); // an item that printed nothing, as CSR does, is followed by the next at once
    }
}

} // namespace quillon
