// SPDX-License-Identifier: MIT
// Translating expressions to code, and running it.
#include "core/expression_code.h"

#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/variables.h"

#include <algorithm>
#include <numbers>
#include <span>

namespace quillon {
namespace {

constexpr int STACK_SIZE = 16;                       ///< an expression that needs more is evaluated the plain way
constexpr std::uint32_t NO_CODE = ~std::uint32_t{0}; ///< in `expression_at`: evaluated the plain way

/// An expression under translation. Reading follows the evaluator's levels; whatever it would reject, or is not about
/// numbers, makes `failed`.
struct Translation {
    const Machine& m;
    FastCode& code;
    TokenIndex next = 0; ///< the next token
    Expression expression{};
    int depth = 0;      ///< of nesting
    int used = 0;       ///< numbers on the stack
    bool begun = false; ///< the first operand has been seen
    bool failed = false;
};

const ProgramToken& next_of(const Translation& t) { return t.m.listing->tokens[static_cast<std::size_t>(t.next)]; }

void emit(Translation& t, Operation::Code code, int argument, int growth, double number = 0) {
    t.used += growth;
    t.failed = t.failed || t.used > STACK_SIZE || t.code.operations.size() == t.code.operations.capacity();
    if (!t.failed)
        t.code.operations.push_back({code, static_cast<std::int16_t>(argument), number});
}

const ProgramToken& take(Translation& t) {
    const ProgramToken& token = next_of(t);
    t.expression.last_code = token.code;
    ++t.next;
    return token;
}

void enter(Translation& t) {
    ++t.depth;
    t.expression.nesting = std::max(t.expression.nesting, t.depth);
    t.failed = t.failed || t.depth > NESTING_DEPTH_MAX;
}

/// Notes what the expression's first operand is; true for that one.
bool begin_operand(Translation& t, ValueKind kind, CellIndex cell) {
    if (t.begun)
        return false;
    t.begun = true;
    t.expression.kind = kind;
    t.expression.first_cell = cell;
    return true;
}

bool translate_level(Translation& t, Level level);
bool translate_factor(Translation& t);

void translate_closing(Translation& t) {
    t.failed = t.failed || next_of(t).code != TOKEN_CLOSE;
    if (!t.failed)
        take(t);
}

void translate_variable(Translation& t, const ProgramToken& variable) {
    const bool first = begin_operand(t, VALUE_NUMVAR, variable.subscripted ? NO_CELL : variable.letter);
    if (!variable.subscripted)
        return emit(t, Operation::CELL, variable.letter, 1);
    enter(t);
    take(t);
    translate_level(t, Level::SUM);
    --t.depth;
    translate_closing(t);
    emit(t, first ? Operation::FIRST_CELL : Operation::SUBSCRIPT, variable.letter, 0);
    t.expression.last_code = TOKEN_NUMVAR;
}

void translate_number(Translation& t, double number) {
    begin_operand(t, VALUE_NUMBER, NO_CELL);
    t.failed = t.failed || !in_number_range(number);
    emit(t, Operation::NUMBER, 0, 1, number);
}

bool translate_parenthesis(Translation& t) {
    const bool computed = translate_level(t, Level::SUM);
    translate_closing(t);
    emit(t, Operation::CHECK_RANGE, 0, 0);
    return computed;
}

void translate_sign(Translation& t, TokenCode sign) {
    translate_factor(t);
    if (sign == TOKEN_MINUS)
        emit(t, Operation::NEGATE, 0, 0);
}

void translate_function(Translation& t, TokenCode token) {
    if (formula_of(*t.m.around->language, token) == nullptr) {
        t.failed = true;
        return;
    }
    begin_operand(t, VALUE_NUMBER, NO_CELL);
    translate_factor(t);
    emit(t, Operation::FUNCTION, number_of(token), 0);
}

/// Translates what stands in the place of a factor. Returns whether that is more than a literal or a variable.
bool translate_operand(Translation& t) {
    const ProgramToken& token = take(t);
    switch (token.code) {
    case TOKEN_NUMBER: translate_number(t, token.number); return false;
    case TOKEN_NUMVAR: translate_variable(t, token); return false;
    case TOKEN_PI: translate_number(t, std::numbers::pi); return true;
    case TOKEN_OPEN: return translate_parenthesis(t);
    case TOKEN_PLUS:
    case TOKEN_MINUS: translate_sign(t, token.code); return true;
    default: translate_function(t, token.code); return true;
    }
}

bool translate_factor(Translation& t) {
    enter(t);
    const bool computed = !t.failed && translate_operand(t);
    --t.depth;
    return computed;
}

Operation::Code operation_of(TokenCode token) {
    switch (token) {
    case TOKEN_PLUS: return Operation::ADD;
    case TOKEN_MINUS: return Operation::SUBTRACT;
    case TOKEN_TIMES: return Operation::MULTIPLY;
    case TOKEN_DIVIDE: return Operation::DIVIDE;
    default: return Operation::POWER;
    }
}

bool translate_level(Translation& t, Level level) {
    bool computed = translate_factor(t);
    while (!t.failed) {
        const Level found = level_of(next_of(t).code);
        if (found == Level::FACTOR || found < level)
            break;
        const TokenCode token = take(t).code;
        translate_level(t, next_level(found));
        emit(t, operation_of(token), number_of(token), -1);
        computed = true;
    }
    return computed;
}

/// Translates the expression that begins at a token; returns its place in `expression_at`.
std::uint32_t translate(const Machine& m, TokenIndex first) {
    FastCode& code = m.listing->fast;
    const std::size_t operations = code.operations.size();
    Translation t{m, code, first, {}};
    t.expression.computed = translate_level(t, Level::SUM);
    const TokenCode end = next_of(t).code;
    // The evaluator has a way of its own to read an operand there, which is an error.
    t.failed = t.failed || is_operand_token(end) || end == TOKEN_LEXICAL_ERROR;
    if (t.failed || code.expressions.size() == code.expressions.capacity()) {
        code.operations.resize(operations);
        return NO_CODE;
    }
    t.expression.operations = static_cast<std::uint32_t>(operations);
    t.expression.operation_count = static_cast<std::uint32_t>(code.operations.size() - operations);
    t.expression.end_token = t.next;
    t.expression.end_code = end;
    code.expressions.push_back(t.expression);
    return static_cast<std::uint32_t>(code.expressions.size());
}

/// Whether a cell can be read as a number that a factor may have.
bool is_readable(const Variable& cell) { return cell.kind != CELL_STRING && in_number_range(cell.number); }

bool apply_formula(const Machine& m, TokenCode function, double& x) {
    return formula_of(*m.around->language, function)(m, function, x);
}

/// Puts a result in the place of the two topmost numbers; the new top.
double* replace_two(double* top, double result) {
    top[-1] = result;
    return top - 1;
}

// The analyzer cannot know that the translation counts what is on the stack.
// NOLINTBEGIN(clang-analyzer-core.*)

/// Runs operations. `first` becomes the cell of a first operand with a subscript. False when they give up.
bool run_operations(const Machine& m, std::span<const Operation> operations, CellIndex& first, double& result) {
    double stack[STACK_SIZE + 1]; // from 1 on
    double* top = stack;
    for (const Operation& operation : operations) {
        switch (operation.code) {
        case Operation::NUMBER: *++top = operation.number; break;
        case Operation::CELL: {
            const Variable& cell = cell_at(m, operation.argument);
            if (!is_readable(cell))
                return false;
            *++top = cell.number;
            break;
        }
        case Operation::SUBSCRIPT:
        case Operation::FIRST_CELL: {
            const CellIndex cell = variable_cell(operation.argument, truncate_to_int(round6(*top)));
            if (cell == NO_CELL || !is_readable(cell_at(m, cell)))
                return false;
            first = operation.code == Operation::FIRST_CELL ? cell : first;
            *top = cell_at(m, cell).number;
            break;
        }
        case Operation::ADD: top = replace_two(top, top[-1] + *top); break;
        case Operation::SUBTRACT: top = replace_two(top, top[-1] - *top); break;
        case Operation::MULTIPLY: top = replace_two(top, top[-1] * *top); break;
        case Operation::DIVIDE:
            if (*top == 0)
                return false;
            top = replace_two(top, top[-1] / *top);
            break;
        case Operation::POWER:
            top = replace_two(top, arithmetic(static_cast<TokenCode>(operation.argument), top[-1], *top));
            break;
        case Operation::NEGATE: *top = -*top; break;
        case Operation::FUNCTION:
            if (!apply_formula(m, static_cast<TokenCode>(operation.argument), *top))
                return false;
            [[fallthrough]];
        case Operation::CHECK_RANGE:
            if (!in_number_range(*top))
                return false;
            break;
        }
    }
    result = *top;
    return true;
}

// NOLINTEND(clang-analyzer-core.*)

/// Leaves in the record what evaluating the expression's tokens leaves there.
void leave_result(Machine& m, const Expression& expression, CellIndex first, double result) {
    m.eval.next = expression.end_token;
    m.eval.token = expression.last_code;
    consume(m, m.listing->tokens[static_cast<std::size_t>(expression.end_token)]);
    m.eval.value.number = result;
    m.eval.value.cell = first;
    m.eval.value.kind = expression.kind;
    m.eval.value.complete = expression.computed;
    m.eval.operand_done = true;
}

} // namespace

void reserve_fast_code(FastCode& code, std::size_t token_count) {
    code.expression_at.assign(token_count, 0);
    code.expressions.reserve(token_count / 2);
    code.operations.reserve(token_count);
}

const Expression* find_expression(const Machine& m, TokenIndex first) {
    FastCode& code = m.listing->fast;
    std::uint32_t& place = code.expression_at[static_cast<std::size_t>(first)];
    if (place == 0)
        place = translate(m, first);
    return place != NO_CODE ? &code.expressions[place - 1] : nullptr;
}

bool run_expression(Machine& m, const Expression& expression, double& result) {
    if (m.eval.nesting_depth + expression.nesting > NESTING_DEPTH_MAX)
        return false;
    CellIndex first = expression.first_cell;
    const std::span operations(&m.listing->fast.operations[expression.operations], expression.operation_count);
    if (!run_operations(m, operations, first, result))
        return false;
    leave_result(m, expression, first, result);
    return true;
}

} // namespace quillon
