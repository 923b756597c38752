// eval_statement: assignments, relations, and what may end a statement.
#include "core/arithmetic.h"
#include "core/collation.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/variables.h"

namespace quillon {
namespace {

bool failed(const Machine& m) { return m.error_code != ERROR_NONE; }

bool is_relation(int token) { return token == '<' || token == '>' || (token >= TOKEN_NE && token <= TOKEN_EQEQ); }

/// Evaluates what stands behind a relational operator or an "=".
double eval_right_side(Machine& m) {
    const double right = eval_argument(m);
    if (!failed(m) && m.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    return right;
}

/// Whether a relation holds between operands of which `order` tells how the left compares with the right.
bool holds(int relation, int order) {
    switch (relation) {
    case '<': return order < 0;
    case '>': return order > 0;
    case TOKEN_NE: return order != 0;
    case TOKEN_GE: return order >= 0;
    case TOKEN_LE: return order <= 0;
    default: return order == 0;
    }
}

/// Compares a string with what follows; 0 and an error when that is no string.
int order_of_strings(Machine& m) {
    const BoundedText<127> left = m.value.text;
    eval_right_side(m);
    if (failed(m))
        return 0;
    if (value_type(m.value) != TYPE_STRING)
        raise_error(m, ERROR_SYNTAX, MESSAGE_TYPES_DIFFER);
    return compare_strings(left, m.value.text);
}

int order_of_numbers(Machine& m, double left, ValueType left_type) {
    const double right = eval_right_side(m);
    if (failed(m))
        return 0;
    if (value_type(m.value) != left_type)
        raise_error(m, ERROR_SYNTAX, MESSAGE_TYPES_DIFFER);
    return compare_numbers(left, right);
}

[[gnu::noinline]] double compare(Machine& m, double left) {
    const int relation = m.token;
    const ValueType type = value_type(m.value);
    const int order = type == TYPE_STRING ? order_of_strings(m) : order_of_numbers(m, left, type);
    if (failed(m))
        return 0;
    m.value.complete = 1;
    m.operand_done = 0;
    return holds(relation, order) ? 1 : 0;
}

/// The left side of an assignment, kept while the right side is evaluated.
struct Target {
    int kind;
    Variable* variable;
    bool computed;
    bool is_string;
};

/// The error for a left side that is no variable, or none at all.
void raise_target_error(Machine& m, const Target& target) {
    raise_error(m, ERROR_SYNTAX, target.is_string ? MESSAGE_TARGET_STRING : MESSAGE_TARGET_NUMBER);
}

void assign_number(Machine& m, Variable& cell, double number) {
    const bool from_string_cell = m.value.kind == VALUE_NUMVAR && value_type(m.value) == TYPE_STRING;
    if (m.value.kind == VALUE_STRVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_TO_NUMVAR);
    else if (m.value.kind == VALUE_STRING)
        raise_error(m, ERROR_SYNTAX, MESSAGE_LITERAL_TO_NUMVAR);
    else if (from_string_cell)
        raise_error(m, ERROR_VARIABLE, MESSAGE_STRING_TO_NUMVAR);
    else
        store_number(cell, number);
}

void assign_string(Machine& m, Variable& cell) {
    const bool literal_alone = m.value.kind == VALUE_STRING && m.value.complete == 0;
    if (m.value.kind == VALUE_NUMBER)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NUMBER_TO_STRVAR);
    else if (m.value.kind == VALUE_NUMVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NUMVAR_TO_STRVAR);
    else
        store_string(cell, literal_alone ? literal_part(m, cell, m.value.text) : m.value.text.view());
}

/// What an assignment leaves in the record: its target, as something computed.
void leave_target(Machine& m, int kind, Variable* variable) {
    m.value.kind = kind;
    m.value.variable = variable;
    m.value.complete = 1;
    m.operand_done = 0;
}

void check_statement_end(Machine& m);

[[gnu::noinline]] double assign(Machine& m) {
    const Target target{m.value.kind, m.value.variable, m.value.complete != 0, value_type(m.value) == TYPE_STRING};
    if (target.kind == VALUE_NONE) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_TARGET);
        return 0;
    }
    const double number = eval_right_side(m);
    if (failed(m))
        return 0;
    const bool to_number = target.kind == VALUE_NUMVAR && !target.computed;
    const bool to_string = target.kind == VALUE_STRVAR && !target.computed;
    if (value_type(m.value) == TYPE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    else if (to_number)
        assign_number(m, *target.variable, number);
    else if (to_string)
        assign_string(m, *target.variable);
    else
        raise_target_error(m, target);
    if (failed(m))
        return 0;
    leave_target(m, target.kind, target.variable);
    check_statement_end(m);
    return failed(m) || to_string ? 0 : number;
}

void raise_misplaced(Machine& m, const char* what) {
    raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":'%s'", what);
}

/// Whether a token that ends no statement may end one, or an expression. What may not is an unknown token; command mode
/// drops it.
[[gnu::noinline]] void check_unusual_end(Machine& m) {
    switch (m.token) {
    case ')':
    case ',':
    case TOKEN_STOP:
    case TOKEN_END_WORD: return;
    case '#':
        if (m.stmt_kind != KIND_JUMP)
            raise_misplaced(m, "#");
        return;
    case ';':
        if (m.stmt_kind != KIND_PRINT && m.stmt_kind != KIND_CONDITION)
            raise_misplaced(m, ";");
        return;
    case TOKEN_THEN:
        if (m.stmt_kind != KIND_CONDITION)
            raise_misplaced(m, "THEN");
        return;
    default:
        if (m.run_state == STATE_COMMAND)
            m.token = TOKEN_UNKNOWN;
        else
            raise_unknown_token(m);
    }
}

void check_statement_end(Machine& m) {
    if (!is_statement_end(m.token))
        check_unusual_end(m);
}

/// PRINT and INPUT: their lists begin with nothing evaluated.
[[gnu::noinline]] void begin_list(Machine& m) {
    m.value.kind = VALUE_NONE;
    m.value.number = 0;
    m.value.variable = nullptr;
    if (m.token == TOKEN_PRINT)
        m.wait_counter = 0;
    const StatementHandler handler = statement_of(*m.language, m.token).handler;
    if (m.token == TOKEN_INPUT)
        next_token(m);
    handler(m);
    m.operand_done = 0;
}

/// Assigns a number, by its expression's code, to a variable without a subscript that holds one. Leaves what `assign`
/// leaves. False, with nothing changed, for all else.
bool assign_known(Machine& m, const Token& token, double& result) {
    if (token.subscripted || (&token)[1].code != '=')
        return false;
    Variable& cell = m.variables[static_cast<std::size_t>(token.letter)];
    if (cell.kind == 1 || !in_number_range(cell.number) || m.stmt_kind == KIND_CONDITION)
        return false;
    const Expression* expression = find_expression(m, (&token)[2]);
    if (expression == nullptr || !is_statement_end(expression->end_code) || !run_expression(m, *expression, result))
        return false;
    store_number(cell, result);
    leave_target(m, VALUE_NUMVAR, &cell);
    return true;
}

/// Executes what the caches know of the commonest statements in one go: an assignment, and none at all before the end
/// of a line. False, with nothing changed, for all else.
bool execute_known(Machine& m, double& result) {
    const Token* token = find_token(m.scan_cache, m.scan_ptr);
    if (token == nullptr || failed(m) || m.nesting_depth >= NESTING_DEPTH_MAX)
        return false;
    if (token->code == TOKEN_NUMVAR)
        return assign_known(m, *token, result);
    if (!is_statement_end(token->code))
        return false;
    take_statement_end(m, *token);
    return true;
}

} // namespace

double eval_statement(Machine& m) {
    double result = 0;
    if (execute_known(m, result))
        return result;
    const double left = eval_sum(m);
    if (failed(m))
        return 0;
    if (m.token == '=' && m.stmt_kind != KIND_CONDITION)
        return assign(m);
    if (m.token == '=' || is_relation(m.token))
        return compare(m, left);
    if (m.token == TOKEN_PRINT || m.token == TOKEN_INPUT)
        begin_list(m);
    else
        check_statement_end(m);
    return failed(m) ? 0 : left;
}

} // namespace quillon
