// SPDX-License-Identifier: MIT
// next_token: a program token put into the machine's record; resolves variables and their subscripts.
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program_text.h"
#include "core/variables.h"

namespace quillon {
namespace {

void compose_scan_fault(Machine& m, const ProgramToken& token) {
    switch (token.fault) {
    case ScanFault::BAD_NUMBER: return compose_detail(m, MESSAGE_BAD_NUMBER);
    case ScanFault::UNKNOWN_WORD:
        return compose_detail(m, MESSAGE_UNKNOWN_TOKEN, ":\"%s\"",
                              word_text(scan_token(source_at(m, token.begin))).c_str());
    case ScanFault::BAD_AMPERSAND: return compose_detail(m, MESSAGE_UNKNOWN_TOKEN, ":\"&\"");
    default: return compose_detail(m, MESSAGE_UNKNOWN_TOKEN);
    }
}

/// Evaluates the subscript of the variable just consumed; its ")" is consumed with it.
int eval_subscript(Machine& m, SourceOffset variable) {
    const TokenCode before_variable = m.eval.prev_token;
    m.eval.token = TOKEN_OPEN;
    ++m.eval.next;
    if (!descend(m))
        return 0;
    const int index = truncate_to_int(round6(eval_statement(m)));
    ascend(m);
    m.eval.prev_token = before_variable;
    m.eval.token_start = variable;
    return index;
}

/// The cell that a variable means; NO_CELL after an error.
CellIndex resolve_cell(Machine& m, const ProgramToken& token) {
    const int index = token.subscripted ? eval_subscript(m, token.begin) : 0;
    if (failed(m))
        return NO_CELL;
    const CellIndex cell = variable_cell(token.letter, index);
    if (cell == NO_CELL) {
        const char* dollar = token.code == TOKEN_STRVAR ? "$" : "";
        compose_detail(m, MESSAGE_SUBSCRIPT, " =%c%s(%d)(MAX:%d)", 'A' + token.letter, dollar, index, DOLLAR_CELL);
    }
    return cell;
}

/// Makes a cell the current operand.
void take_cell(Machine& m, const ProgramToken& token, CellIndex index) {
    const Variable& cell = cell_at(m, index);
    Value& value = m.eval.value;
    const bool as_string = token.code == TOKEN_STRVAR;
    value.cell = index;
    value.kind = as_string ? VALUE_STRVAR : VALUE_NUMVAR;
    value.complete = false;
    value.number = as_string ? 0 : cell.number;
    if (as_string || cell.kind == CELL_STRING)
        value.text = cell.text;
}

/// Not inlined: most variables have no subscript.
[[gnu::noinline]] void take_resolved(Machine& m, const ProgramToken& token) {
    const CellIndex cell = resolve_cell(m, token);
    m.eval.token = cell == NO_CELL ? TOKEN_SUBSCRIPT_ERROR : token.code;
    if (cell != NO_CELL)
        return take_cell(m, token, cell);
    m.eval.value.cell = NO_CELL;
    m.eval.value.kind = VALUE_NONE;
    m.eval.value.complete = false;
}

void take_variable(Machine& m, const ProgramToken& token) {
    if (token.letter == DOLLAR_LETTER) {
        take_cell(m, token, DOLLAR_CELL);
        m.variables[DOLLAR_CELL].kind = CELL_STRING;
    } else if (token.subscripted || failed(m)) {
        take_resolved(m, token);
    } else {
        take_cell(m, token, token.letter);
    }
}

void take_literal(Machine& m, const ProgramToken& token) {
    Value& value = m.eval.value;
    value.cell = NO_CELL;
    value.complete = false;
    if (token.code == TOKEN_NUMBER) {
        value.kind = VALUE_NUMBER;
        value.number = token.number;
    } else {
        value.kind = VALUE_STRING;
        value.number = 0;
        value.text = literal_text(m, token);
    }
}

void take_fault(Machine& m, const ProgramToken& token) {
    compose_scan_fault(m, token);
    m.eval.value.kind = VALUE_NONE;
}

/// Consumes a token that will be rejected, preserving `value`. Not inlined: the copy must not lie in the frames of
/// nested calls.
[[gnu::noinline]] void consume_rejected(Machine& m) {
    const Value operand = m.eval.value;
    next_token(m);
    m.eval.value = operand;
}

} // namespace

TokenCode next_token(Machine& m) {
    const ProgramToken& token = token_at(m, m.eval.next);
    consume(m, token);
    switch (token.code) {
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR: take_variable(m, token); break;
    case TOKEN_NUMBER:
    case TOKEN_STRING: take_literal(m, token); break;
    case TOKEN_LEXICAL_ERROR: take_fault(m, token); break;
    default: break;
    }
    return m.eval.token;
}

void next_token_after_operand(Machine& m) {
    const ProgramToken& token = token_at(m, m.eval.next);
    if (is_operand_token(token.code) || token.code == TOKEN_LEXICAL_ERROR)
        consume_rejected(m);
    else
        consume(m, token);
}

void consume_operand(Machine& m, const ProgramToken& token) {
    consume(m, token);
    if (token.code == TOKEN_NUMVAR || token.code == TOKEN_STRVAR)
        take_variable(m, token);
    else
        take_literal(m, token);
}

void skip_statement_rest(Machine& m) {
    while (!is_statement_end(peek_token(m)))
        ++m.eval.next;
    m.eval.prev_token = m.eval.token;
    m.eval.token = peek_token(m);
    m.eval.next += m.eval.token == TOKEN_END ? 0 : 1;
}

} // namespace quillon
