// PRINT and the scrolling of texts that do not fit.
#include "statements/print.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/number_format.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_BAD_ITEM{"PRINT", 1};
constexpr MessageId MESSAGE_TRAILING_COMMA{"PRINT", 2};
constexpr int FIRST_STATEMENT_TOKEN = 513; ///< from here on a token cannot stand in a PRINT list

bool failed(const Machine& m) { return m.error_code != ERROR_NONE; }

void save_position(Machine& m) {
    m.saved_stmt_kind = m.stmt_kind;
    m.saved_token = m.token;
}

/// What a separator does with a text that was cut at the display's width.
struct AfterScroll {
    int state;
    int kind;
};

void start_scroll(Machine& m, int column_before, AfterScroll after) {
    const bool crossed_width = column_before < DISPLAY_WIDTH && m.display_cursor >= DISPLAY_WIDTH;
    m.wait_counter = crossed_width ? m.wait_print_sc_ini : m.wait_print_sc;
    m.state_after_scroll = after.state;
    m.kind_after_scroll = after.kind;
    m.stmt_kind = KIND_SCROLL;
}

PutResult print_item_value(Machine& m) {
    const PutResult result = print_value(m);
    if (result != PutResult::NOTHING)
        m.item_printed = 1;
    return result;
}

/// The item is followed by ",": after it the machine waits for EXE.
PutResult print_before_comma(Machine& m) {
    const int column = m.display_cursor;
    const PutResult result = print_item_value(m);
    if (failed(m))
        return result;
    if (result == PutResult::PENDING)
        start_scroll(m, column, {STATE_PRINT_WAIT, m.stmt_kind});
    else
        enter_state(m, STATE_PRINT_WAIT);
    return result;
}

/// The item is followed by ";": the next one is written behind it.
PutResult print_before_semicolon(Machine& m) {
    const int column = m.display_cursor;
    const PutResult result = print_item_value(m);
    if (!failed(m) && result == PutResult::PENDING)
        start_scroll(m, column, {m.base_state, m.stmt_kind});
    return result;
}

/// The item ends the statement; where there is none behind a ";", the statement just ends.
PutResult print_last(Machine& m) {
    if (m.prev_token == ',') {
        raise_error(m, ERROR_SYNTAX, MESSAGE_TRAILING_COMMA);
        return PutResult::NOTHING;
    }
    if (m.prev_token == ';') {
        m.stmt_kind = KIND_NONE;
        m.prev_state = m.run_state;
        return PutResult::NOTHING;
    }
    const int column = m.display_cursor;
    const PutResult result = print_value(m);
    if (failed(m))
        return result;
    m.item_printed = 1;
    if (result == PutResult::PENDING) {
        start_scroll(m, column, {STATE_PRINT_WAIT, KIND_NONE});
        return result;
    }
    m.run_state = STATE_PRINT_WAIT; // prev_state keeps what it was: the end of the program looks at it
    m.kind_after_scroll = KIND_NONE;
    m.stmt_kind = KIND_NONE;
    return result;
}

PutResult print_item(Machine& m) {
    switch (m.token) {
    case ',': return print_before_comma(m);
    case ';': return print_before_semicolon(m);
    case TOKEN_COLON:
    case TOKEN_END: return print_last(m);
    default: raise_token_error(m, MESSAGE_BAD_ITEM, m.token); return PutResult::NOTHING;
    }
}

/// A bare PRINT: the line stays visible until the next output clears it.
void print_nothing(Machine& m) {
    m.stmt_kind = KIND_NONE;
    m.print_clear_pending = 1;
    m.display_cursor = 0;
}

} // namespace

PutResult print_value(Machine& m) {
    NumberText text;
    return format_number(m, text) ? put_display_text(m, m.display_cursor, text) : PutResult::NOTHING;
}

void print_statement(Machine& m) {
    eval_sum(m);
    if (failed(m))
        return;
    if (m.print_clear_pending != 0) {
        clear_display(m);
        m.print_clear_pending = 0;
    }
    save_position(m);
    if (is_statement_end(m.token) && m.value.kind == VALUE_NONE)
        return print_nothing(m);
    while (!failed(m)) {
        if (m.token >= FIRST_STATEMENT_TOKEN)
            return raise_token_error(m, MESSAGE_BAD_ITEM, m.token);
        save_position(m);
        const int token = m.token;
        const PutResult result = print_item(m);
        if (failed(m) || result == PutResult::PENDING)
            return;
        save_position(m);
        if (is_statement_end(token) || token == ',' || result != PutResult::NOTHING)
            return;
        eval_sum(m); // an item that printed nothing, as CSR does, is followed by the next at once
    }
}

bool print_scroll_step(Machine& m) {
    if (put_display_text(m, m.display_cursor, m.pending_print_text) == PutResult::PENDING)
        return true;
    m.stmt_kind = m.kind_after_scroll;
    m.saved_stmt_kind = KIND_PRINT; // a stop has saved the scroll in its place
    m.saved_token = m.token;
    m.kind_after_scroll = KIND_NONE;
    enter_state(m, m.state_after_scroll);
    m.state_after_scroll = m.base_state;
    return false;
}

} // namespace quillon
