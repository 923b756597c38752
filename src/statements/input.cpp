// INPUT lists and entries.
#include "statements/input.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/scanner.h"
#include "core/variables.h"
#include "statements/line_editor.h"
#include "statements/print.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_INPUT_LIST{"INPUT", 0};
constexpr MessageId MESSAGE_INPUT_PROMPT{"INPUT", 1};
constexpr MessageId MESSAGE_INPUT_ENTRY{"INPUT", 2};

bool failed(const Machine& m) { return m.error_code != ERROR_NONE; }

bool is_variable(int token) { return token == TOKEN_NUMVAR || token == TOKEN_STRVAR; }

void show_question_mark(Machine& m) { put_display_text(m, m.display_cursor, "?"); }

/// Reads the token behind a variable of the list; false, with an error, when it cannot stand there.
bool read_list_separator(Machine& m) {
    next_token_behind_operand(m);
    if (!failed(m) && !is_statement_end(m.token) && m.token != ',')
        raise_token_error(m, MESSAGE_INPUT_LIST, m.token);
    return !failed(m);
}

/// The cell takes on the type of what will be entered.
void prepare_cell(Variable& cell, bool for_string) {
    if (for_string && cell.kind != 1)
        store_string(cell, {});
    else if (!for_string && cell.kind != 0)
        store_number(cell, cell.number);
}

/// Shows the "?" and waits for the first key.
void ask(Machine& m) {
    show_question_mark(m);
    prepare_cell(*m.value.variable, m.value.kind == VALUE_STRVAR);
    m.entry_line = m.value;
    m.entry_line.text.clear();
    enter_state(m, STATE_RUN);
    m.stmt_kind = KIND_PROMPT;
}

void ask_for_variable(Machine& m) {
    if (read_list_separator(m))
        ask(m);
}

/// A prompt, a "," and a variable. The separator behind them is read again when the list goes on.
void ask_with_prompt(Machine& m) {
    print_value(m);
    next_token_behind_operand(m);
    const bool comma = !failed(m) && m.token == ',';
    if (comma)
        next_token(m);
    if (failed(m))
        return;
    if (!comma || !is_variable(m.token))
        return raise_error(m, ERROR_SYNTAX, MESSAGE_INPUT_PROMPT);
    const char* behind_variable = m.scan_ptr;
    if (!read_list_separator(m))
        return;
    m.scan_ptr = behind_variable;
    ask(m);
}

void handle_element(Machine& m) {
    switch (m.token) {
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR: return ask_for_variable(m);
    case TOKEN_STRING: return ask_with_prompt(m);
    case ',':
        m.stmt_kind = KIND_INPUT;
        m.display_offset = 0;
        m.display_cursor = 0;
        next_token(m);
        return;
    case TOKEN_COLON:
    case TOKEN_END:
        enter_state(m, m.base_state);
        m.stmt_kind = KIND_NONE;
        return;
    default: return raise_token_error(m, MESSAGE_INPUT_LIST, m.token);
    }
}

/// Whether a statement word stands in the text: it would run, and an entry is only to be evaluated.
bool has_statement_word(const char* text) {
    Token token = scan_token(text);
    while (token.code != TOKEN_END && token.code < STATEMENT_WORD)
        token = scan_token(token.end);
    return token.code != TOKEN_END;
}

/// Evaluates the entry in the command buffer; false when it is not one whole numeric expression.
bool eval_entry(Machine& m, double& number) {
    m.scan_ptr = m.command_buffer.c_str();
    m.token_start = m.scan_ptr;
    if (has_statement_word(m.scan_ptr))
        return false;
    m.value.kind = VALUE_NONE;
    number = eval_sum(m);
    return !failed(m) && m.token == TOKEN_END && value_type(m.value) == TYPE_NUMBER;
}

/// Takes a number for the target; false, with the machine showing the error, when the entry is none.
bool take_number(Machine& m) {
    m.saved_scan_ptr = m.scan_ptr;
    m.command_buffer = m.entry_line.text;
    m.entry_line.text.clear();
    double number = 0;
    const bool accepted = eval_entry(m, number);
    m.scan_ptr = m.saved_scan_ptr;
    m.stmt_kind = KIND_INPUT;
    if (accepted && m.entry_line.variable->kind != 1) {
        store_number(*m.entry_line.variable, number);
        return true;
    }
    m.error_code = ERROR_NONE; // whatever the evaluation found, the entry is what is wrong
    m.run_state = STATE_INPUT;
    raise_error(m, ERROR_INPUT, MESSAGE_INPUT_ENTRY, " \"%s\"", m.entry_line.text.c_str());
    return false;
}

/// The entry has been taken: on with the list, or with what stood before a typed INPUT.
void finish_entry(Machine& m) {
    clear_display_line(m);
    m.key_string.clear();
    if (m.typed_wait != 0)
        clear_entry_line(m);
    enter_state(m, m.typed_wait != 0 ? STATE_COMMAND : m.base_state);
    m.typed_wait = 0;
    m.token = m.saved_token;
    m.stmt_kind = m.token == TOKEN_END ? KIND_NONE : KIND_INPUT;
}

} // namespace

void input_statement(Machine& m) {
    handle_element(m);
    m.enter_request = 1; // an open trace window is to be refreshed
    m.saved_token = m.token;
    m.saved_stmt_kind = m.stmt_kind;
}

void begin_entry(Machine& m) {
    m.stmt_kind = KIND_INPUT;
    clear_display_line(m);
    enter_state(m, STATE_INPUT);
    m.enter_request = 0;
    m.prev_key_string.clear(); // the key that began the entry is a new one, though it may have ended the last one
}

void prompt_again(Machine& m) {
    m.stmt_kind = KIND_PROMPT;
    clear_display_line(m);
    show_question_mark(m);
    clear_key(m);
    m.soft_key_code = 0;
    m.entry_line.text.clear();
    m.error_code = ERROR_NONE;
    m.enter_request = 0;
}

void input_entry_tick(Machine& m) {
    if (m.enter_request == 0)
        return edit_line(m);
    if (m.entry_line.text.empty()) {
        clear_display(m);
        show_question_mark(m);
        enter_state(m, STATE_RUN);
        m.stmt_kind = KIND_PROMPT;
        return;
    }
    if (m.entry_line.kind == VALUE_STRVAR)
        store_string(*m.entry_line.variable, m.entry_line.text);
    else if (!take_number(m))
        return;
    finish_entry(m);
}

} // namespace quillon
