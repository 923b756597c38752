// SPDX-License-Identifier: MIT
// INPUT lists and entries.
#include "statements/input.h"

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

constexpr MessageId MESSAGE_INPUT_LIST{"INPUT", 0};
constexpr MessageId MESSAGE_INPUT_PROMPT{"INPUT", 1};
constexpr MessageId MESSAGE_INPUT_ENTRY{"INPUT", 2};

bool is_variable(TokenCode token) { return token == TOKEN_NUMVAR || token == TOKEN_STRVAR; }

/// Reads the token behind a variable of the list; false, with an error, when it cannot stand there.
bool read_list_separator(Machine& m) {
    next_token_after_operand(m);
    if (!failed(m) && !is_statement_end(m.eval.token) && m.eval.token != TOKEN_COMMA)
        raise_token_error(m, MESSAGE_INPUT_LIST, m.eval.token);
    return !failed(m);
}

void ask_for_variable(Machine& m) {
    if (read_list_separator(m))
        ask(m);
}

/// A prompt, a "," and a variable. The separator behind them is read again when the list goes on.
void ask_with_prompt(Machine& m) {
    print_value(m);
    next_token_after_operand(m);
    const bool comma = !failed(m) && m.eval.token == TOKEN_COMMA;
    if (comma)
        next_token(m);
    if (failed(m))
        return;
    if (!comma || !is_variable(m.eval.token))
        return raise_error(m, ERROR_SYNTAX, MESSAGE_INPUT_PROMPT);
    const TokenIndex after_variable = m.eval.next;
    if (!read_list_separator(m))
        return;
    m.eval.next = after_variable;
    ask(m);
}

void handle_element(Machine& m) {
    switch (m.eval.token) {
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR: return ask_for_variable(m);
    case TOKEN_STRING: return ask_with_prompt(m);
    case TOKEN_COMMA:
        m.eval.stmt_kind = KIND_INPUT;
        m.screen.display_offset = 0;
        m.screen.display_cursor = 0;
        next_token(m);
        return;
    case TOKEN_COLON:
    case TOKEN_END: return end_input(m);
    default: return raise_token_error(m, MESSAGE_INPUT_LIST, m.eval.token);
    }
}

/// Whether the typed line has a statement word: it would run, and an entry is only to be evaluated.
bool has_statement_word(const TypedLine& line) {
    return std::any_of(line.tokens.begin(), line.tokens.end(),
                       [](const ProgramToken& token) { return token.code >= STATEMENT_WORD; });
}

/// Evaluates the committed entry; false when it is not one whole numeric expression.
bool eval_entry(Machine& m, double& number) {
    m.eval.next = TYPED;
    m.eval.token_start = TYPED;
    if (has_statement_word(m.entry.typed))
        return false;
    m.eval.value.kind = VALUE_NONE;
    number = eval_sum(m);
    return !failed(m) && m.eval.token == TOKEN_END && value_type(m) == TYPE_NUMBER;
}

/// Takes a number for the target; false, with the machine showing the error, when the entry is none.
bool take_number(Machine& m) {
    m.entry.saved_next = m.eval.next;
    set_typed_line(m.entry.typed, m.entry.entry_line.text);
    m.entry.entry_line.text.clear();
    double number = 0;
    const bool accepted = eval_entry(m, number);
    m.eval.next = m.entry.saved_next;
    m.eval.stmt_kind = KIND_INPUT;
    Variable& target = cell_at(m, m.entry.entry_line.cell);
    if (accepted && target.kind != CELL_STRING) {
        store_number(target, number);
        return true;
    }
    refuse_entry(m);
    raise_error(m, ERROR_INPUT, MESSAGE_INPUT_ENTRY, " \"%s\"", m.entry.entry_line.text.c_str());
    return false;
}

} // namespace

void input_statement(Machine& m) {
    handle_element(m);
    m.keys.enter_request = true; // the machine's own: the tick drops it
    save_position(m);
}

void input_entry_tick(Machine& m) {
    if (!m.keys.enter_request)
        return edit_line(m);
    if (m.entry.entry_line.text.empty())
        return return_to_prompt(m);
    if (m.entry.entry_line.kind == VALUE_STRVAR)
        store_string(cell_at(m, m.entry.entry_line.cell), m.entry.entry_line.text);
    else if (!take_number(m))
        return;
    finish_entry(m);
}

} // namespace quillon
