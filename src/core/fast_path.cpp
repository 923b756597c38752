// SPDX-License-Identifier: MIT
// What is evaluated and executed in one go.
#include "core/fast_path.h"

#include "core/expression_code.h"
#include "core/interpreter.h"
#include "core/variables.h"

namespace quillon {
namespace {

/// Whether the listing's code may be used now.
bool is_open(const Machine& m) {
    return m.eval.next < TYPED && m.listing->fast.enabled && !failed(m) && m.eval.nesting_depth < NESTING_DEPTH_MAX;
}

/// Whether an operand is a whole expression: neither an operator follows it, nor anything that is a fault there.
bool is_lone_operand(const ProgramToken& token, TokenCode following) {
    return is_operand_token(token.code) && !token.subscripted && level_of(following) == Level::FACTOR &&
           !is_operand_token(following) && following != TOKEN_LEXICAL_ERROR;
}

double eval_lone_operand(Machine& m, const ProgramToken& token) {
    consume_operand(m, token);
    consume(m, token_at(m, m.eval.next));
    m.eval.operand_done = true;
    return checked_number(m, operand_number(m));
}

/// The end of a statement where an operand could be: the statement's context ends with it.
void take_statement_end(Machine& m, const ProgramToken& token) {
    consume(m, token);
    m.eval.stmt_kind = KIND_NONE;
}

/// Runs a statement word in the place of an expression.
bool run_word(Machine& m, const ProgramToken& token, double& result) {
    const Statement statement = statement_of(*m.around->language, token.code);
    if (statement.handler == nullptr || m.eval.stmt_kind == KIND_PRINT)
        return false;
    consume(m, token);
    ++m.eval.nesting_depth; // as the factor does that the plain way reads it by
    run_statement_word(m, statement);
    --m.eval.nesting_depth;
    if (!is_statement_end(m.eval.token))
        result = eval_operators(m, Level::SUM, 0);
    return true;
}

/// Assigns a number, by its expression's code, to a variable without a subscript that holds one.
bool assign_number(Machine& m, const ProgramToken& target, double& result) {
    if (target.subscripted || token_at(m, m.eval.next + 1).code != TOKEN_EQUALS)
        return false;
    Variable& cell = cell_at(m, target.letter);
    if (cell.kind == CELL_STRING || !in_number_range(cell.number) || m.eval.stmt_kind == KIND_CONDITION)
        return false;
    const Expression* expression = find_expression(m, m.eval.next + 2);
    if (expression == nullptr || !is_statement_end(expression->end_code) || !run_expression(m, *expression, result))
        return false;
    store_number(cell, result);
    set_assignment_result(m, VALUE_NUMVAR, target.letter);
    return true;
}

} // namespace

bool try_evaluate(Machine& m, double& result) {
    if (!is_open(m))
        return false;
    const ProgramToken& token = token_at(m, m.eval.next);
    if (token.code >= STATEMENT_FIRST)
        return run_word(m, token, result);
    if (is_statement_end(token.code)) {
        take_statement_end(m, token);
        return true;
    }
    if (is_lone_operand(token, token_at(m, m.eval.next + 1).code)) {
        result = eval_lone_operand(m, token);
        return true;
    }
    const Expression* expression = find_expression(m, m.eval.next);
    return expression != nullptr && run_expression(m, *expression, result);
}

bool try_execute(Machine& m, double& result) {
    if (!is_open(m))
        return false;
    const ProgramToken& token = token_at(m, m.eval.next);
    if (token.code == TOKEN_NUMVAR)
        return assign_number(m, token, result);
    if (!is_statement_end(token.code))
        return false;
    take_statement_end(m, token);
    return true;
}

} // namespace quillon
