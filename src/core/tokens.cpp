// next_token: what the scanner reads, put into the machine's record; resolves variables and their subscripts.
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/scanner.h"
#include "core/variables.h"

namespace quillon {
namespace {

void take_scan_fault(Machine& m, const Token& token) {
    switch (token.fault) {
    case ScanFault::BAD_NUMBER: compose_detail(m, MESSAGE_BAD_NUMBER); break;
    case ScanFault::UNKNOWN_WORD: compose_detail(m, MESSAGE_UNKNOWN_TOKEN, ":\"%s\"", word_text(token).c_str()); break;
    case ScanFault::BAD_AMPERSAND: compose_detail(m, MESSAGE_UNKNOWN_TOKEN, ":\"&\""); break;
    default: compose_detail(m, MESSAGE_UNKNOWN_TOKEN); break;
    }
    m.value.kind = TOKEN_LEXICAL_ERROR;
}

/// Evaluates the subscript of a variable; its ")" is consumed with it.
int eval_subscript(Machine& m, const Token& token) {
    const int prev_token = m.prev_token;
    m.token = '(';
    m.scan_ptr = token.end + 1;
    if (!descend(m))
        return 0;
    const int index = truncate_to_int(round6(eval_statement(m)));
    ascend(m);
    m.prev_token = prev_token;
    m.token_start = token.begin;
    return index;
}

/// The cell that a variable means; null after an error.
Variable* resolve_cell(Machine& m, const Token& token) {
    const int index = token.subscripted ? eval_subscript(m, token) : 0;
    if (m.error_code != ERROR_NONE)
        return nullptr;
    Variable* cell = variable_cell(m, token.letter, index);
    if (cell == nullptr) {
        const char* dollar = token.code == TOKEN_STRVAR ? "$" : "";
        compose_detail(m, MESSAGE_SUBSCRIPT, " =%c%s(%d)(MAX:%d)", 'A' + token.letter, dollar, index, DOLLAR_CELL);
    }
    return cell;
}

/// Makes the cell the current operand.
void take_cell(Machine& m, const Token& token, Variable& cell) {
    m.value.variable = &cell;
    m.value.kind = token.code;
    m.value.complete = 0;
    m.value.number = token.code == TOKEN_NUMVAR ? cell.number : 0;
    if (token.code == TOKEN_STRVAR || cell.kind == 1)
        m.value.text = cell.text;
    if (token.letter == DOLLAR_LETTER)
        cell.kind = 1;
}

/// Not inlined: most variables have no subscript.
[[gnu::noinline]] void take_resolved(Machine& m, const Token& token) {
    if (Variable* cell = resolve_cell(m, token)) {
        m.token = token.code;
        return take_cell(m, token, *cell);
    }
    m.token = TOKEN_SUBSCRIPT_ERROR;
    m.value.variable = nullptr;
    m.value.kind = TOKEN_SUBSCRIPT_ERROR;
    m.value.complete = 0;
}

void take_variable(Machine& m, const Token& token) {
    if (token.letter == DOLLAR_LETTER)
        take_cell(m, token, dollar_var(m));
    else if (token.subscripted || m.error_code != ERROR_NONE)
        take_resolved(m, token);
    else
        take_cell(m, token, m.variables[static_cast<std::size_t>(token.letter)]);
}

void take_literal(Machine& m, const Token& token) {
    m.value.variable = nullptr;
    m.value.kind = token.code;
    m.value.complete = 0;
    m.value.number = token.number;
    if (token.code == TOKEN_STRING)
        read_literal(token, m.value.text);
}

int take_next_token(Machine& m, const Token& token) {
    take_token(m, token);
    switch (token.code) {
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR: take_variable(m, token); break;
    case TOKEN_NUMBER:
    case TOKEN_STRING: take_literal(m, token); break;
    case TOKEN_LEXICAL_ERROR: take_scan_fault(m, token); break;
    default: break;
    }
    return m.token;
}

/// Takes something that the statement will refuse; reading it must not touch the operand before it. Not inlined: the
/// copy must not lie in the frames of nested calls.
[[gnu::noinline]] void take_misplaced_token(Machine& m, const Token& token) {
    const Value operand = m.value;
    take_next_token(m, token);
    m.value = operand;
}

void take_token_behind_operand(Machine& m, const Token& token) {
    if (is_operand_token(token.code) || token.code == TOKEN_LEXICAL_ERROR)
        take_misplaced_token(m, token);
    else
        take_token(m, token);
}

} // namespace

void take_operand(Machine& m, const Token& token) {
    take_token(m, token);
    if (token.code == TOKEN_NUMVAR || token.code == TOKEN_STRVAR)
        take_variable(m, token);
    else
        take_literal(m, token);
}

int next_token(Machine& m) {
    if (const Token* known = find_token(m.scan_cache, m.scan_ptr))
        return take_next_token(m, *known);
    return take_next_token(m, scan_token(m.scan_ptr));
}

int peek_token(const Machine& m) {
    const Token* known = find_token(m.scan_cache, m.scan_ptr);
    return known != nullptr ? known->code : scan_token(m.scan_ptr).code;
}

void next_token_behind_operand(Machine& m) {
    if (const Token* known = find_token(m.scan_cache, m.scan_ptr))
        return take_token_behind_operand(m, *known);
    take_token_behind_operand(m, scan_token(m.scan_ptr));
}

} // namespace quillon
