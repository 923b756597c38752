// SPDX-License-Identifier: MIT
// eval_statement: assignments, relations, and what may end a statement.
#include "core/collation.h"
#include "core/errors.h"
#include "core/fast_path.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/run_control.h"
#include "core/variables.h"

namespace quillon {
namespace {

bool is_relation(TokenCode token) {
    return token == TOKEN_LESS || token == TOKEN_GREATER || (token >= TOKEN_NE && token <= TOKEN_EQEQ);
}

/// Evaluates what stands behind a relational operator or an "=".
double eval_right_side(Machine& m) {
    const double right = eval_argument(m);
    if (!failed(m) && m.eval.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    return right;
}

/// Whether a relation holds between operands of which `order` tells how the left compares with the right.
bool holds(TokenCode relation, int order) {
    switch (relation) {
    case TOKEN_LESS: return order < 0;
    case TOKEN_GREATER: return order > 0;
    case TOKEN_NE: return order != 0;
    case TOKEN_GE: return order >= 0;
    case TOKEN_LE: return order <= 0;
    default: return order == 0;
    }
}

/// Compares a string with what follows; 0 and an error when that is no string.
int order_of_strings(Machine& m) {
    const BoundedText<127> left = m.eval.value.text;
    eval_right_side(m);
    if (failed(m))
        return 0;
    if (value_type(m) != TYPE_STRING)
        raise_error(m, ERROR_SYNTAX, MESSAGE_TYPES_DIFFER);
    return compare_strings(left, m.eval.value.text);
}

int order_of_numbers(Machine& m, double left, ValueType left_type) {
    const double right = eval_right_side(m);
    if (failed(m))
        return 0;
    if (value_type(m) != left_type)
        raise_error(m, ERROR_SYNTAX, MESSAGE_TYPES_DIFFER);
    return compare_numbers(left, right);
}

[[gnu::noinline]] double compare(Machine& m, double left) {
    const TokenCode relation = m.eval.token;
    const ValueType type = value_type(m);
    const int order = type == TYPE_STRING ? order_of_strings(m) : order_of_numbers(m, left, type);
    if (failed(m))
        return 0;
    m.eval.value.complete = true;
    m.eval.operand_done = false;
    return holds(relation, order) ? 1 : 0;
}

/// The left side of an assignment, kept while the right side is evaluated.
struct Target {
    ValueKind kind;
    CellIndex cell;
    bool computed;
    bool is_string;
};

/// The error for a left side that is no variable, or none at all.
void raise_target_error(Machine& m, const Target& target) {
    raise_error(m, ERROR_SYNTAX, target.is_string ? MESSAGE_TARGET_STRING : MESSAGE_TARGET_NUMBER);
}

void assign_number(Machine& m, Variable& cell, double number) {
    const bool from_string_cell = m.eval.value.kind == VALUE_NUMVAR && value_type(m) == TYPE_STRING;
    if (m.eval.value.kind == VALUE_STRVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_TO_NUMVAR);
    else if (m.eval.value.kind == VALUE_STRING)
        raise_error(m, ERROR_SYNTAX, MESSAGE_LITERAL_TO_NUMVAR);
    else if (from_string_cell)
        raise_error(m, ERROR_VARIABLE, MESSAGE_STRING_TO_NUMVAR);
    else
        store_number(cell, number);
}

void assign_string(Machine& m, CellIndex cell) {
    const bool literal_alone = m.eval.value.kind == VALUE_STRING && !m.eval.value.complete;
    if (m.eval.value.kind == VALUE_NUMBER)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NUMBER_TO_STRVAR);
    else if (m.eval.value.kind == VALUE_NUMVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NUMVAR_TO_STRVAR);
    else
        store_string(cell_at(m, cell),
                     literal_alone ? literal_part(cell, m.eval.value.text) : m.eval.value.text.view());
}

void check_statement_end(Machine& m);

[[gnu::noinline]] double assign(Machine& m) {
    const Value& left = m.eval.value;
    const Target target{left.kind, left.cell, left.complete, value_type(m) == TYPE_STRING};
    if (target.kind == VALUE_NONE) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_TARGET);
        return 0;
    }
    const double number = eval_right_side(m);
    if (failed(m))
        return 0;
    const bool to_number = target.kind == VALUE_NUMVAR && !target.computed;
    const bool to_string = target.kind == VALUE_STRVAR && !target.computed;
    if (value_type(m) == TYPE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    else if (to_number)
        assign_number(m, cell_at(m, target.cell), number);
    else if (to_string)
        assign_string(m, target.cell);
    else
        raise_target_error(m, target);
    if (failed(m))
        return 0;
    set_assignment_result(m, target.kind, target.cell);
    check_statement_end(m);
    return failed(m) || to_string ? 0 : number;
}

void raise_misplaced(Machine& m, const char* what) {
    raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":'%s'", what);
}

/// Whether a token that ends no statement may end one, or an expression. What may not is an unknown token; command mode
/// drops it.
[[gnu::noinline]] void check_unusual_end(Machine& m) {
    switch (m.eval.token) {
    case TOKEN_CLOSE:
    case TOKEN_COMMA:
    case TOKEN_STOP:
    case TOKEN_END_WORD: return;
    case TOKEN_HASH:
        if (m.eval.stmt_kind != KIND_JUMP)
            raise_misplaced(m, "#");
        return;
    case TOKEN_SEMICOLON:
        if (m.eval.stmt_kind != KIND_PRINT && m.eval.stmt_kind != KIND_CONDITION)
            raise_misplaced(m, ";");
        return;
    case TOKEN_THEN:
        if (m.eval.stmt_kind != KIND_CONDITION)
            raise_misplaced(m, "THEN");
        return;
    default:
        if (m.run.run_state == STATE_COMMAND)
            m.eval.token = TOKEN_UNKNOWN;
        else
            raise_unknown_token(m);
    }
}

void check_statement_end(Machine& m) {
    if (!is_statement_end(m.eval.token))
        check_unusual_end(m);
}

/// PRINT and INPUT: their lists begin with nothing evaluated.
[[gnu::noinline]] void begin_list(Machine& m) {
    m.eval.value.kind = VALUE_NONE;
    m.eval.value.number = 0;
    m.eval.value.cell = NO_CELL;
    if (m.eval.token == TOKEN_PRINT)
        set_wait(m, 0);
    const StatementHandler handler = statement_of(*m.around->language, m.eval.token).handler;
    if (m.eval.token == TOKEN_INPUT)
        next_token(m);
    if (handler != nullptr) // the language of a machine without words has none
        handler(m);
    m.eval.operand_done = false;
}

} // namespace

void set_assignment_result(Machine& m, ValueKind kind, CellIndex cell) {
    m.eval.value.kind = kind;
    m.eval.value.cell = cell;
    m.eval.value.complete = true;
    m.eval.operand_done = false;
}

double eval_statement(Machine& m) {
    double result = 0;
    if (try_execute(m, result))
        return result;
    const double left = eval_sum(m);
    if (failed(m))
        return 0;
    if (m.eval.token == TOKEN_EQUALS && m.eval.stmt_kind != KIND_CONDITION)
        return assign(m);
    if (m.eval.token == TOKEN_EQUALS || is_relation(m.eval.token))
        return compare(m, left);
    if (m.eval.token == TOKEN_PRINT || m.eval.token == TOKEN_INPUT)
        begin_list(m);
    else
        check_statement_end(m);
    return failed(m) ? 0 : left;
}

} // namespace quillon
