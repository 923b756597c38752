// Translating expressions to code, and running it.
#include "core/expression_code.h"

#include "core/arithmetic.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/variables.h"

#include <algorithm>
#include <numbers>
#include <span>

namespace quillon {
namespace {

constexpr int STACK_SIZE = 16;                       ///< an expression that needs more is evaluated from its text
constexpr std::uint32_t NO_CODE = ~std::uint32_t{0}; ///< in `expression_at`: evaluated from its text

/// An expression under translation. Reading follows the evaluator's levels; what it would refuse, or what is not about
/// numbers, makes `failed`.
struct Translation {
    const Machine& m;
    ExpressionCache& cache;
    const Token* token = nullptr; ///< the next one
    Expression expression;
    int depth = 0;      ///< of nesting
    int used = 0;       ///< numbers on the stack
    bool begun = false; ///< the first operand has been seen
    bool failed = false;
};

void emit(Translation& t, Operation::Code code, int argument, int growth, double number = 0) {
    t.used += growth;
    t.failed = t.failed || t.used > STACK_SIZE || t.cache.operations.size() == t.cache.operations.capacity();
    if (!t.failed)
        t.cache.operations.push_back({code, static_cast<std::int16_t>(argument), number});
}

const Token& take(Translation& t) {
    t.expression.last_token = t.token->code;
    return *t.token++;
}

void enter(Translation& t) {
    ++t.depth;
    t.expression.nesting = std::max(t.expression.nesting, t.depth);
    t.failed = t.failed || t.depth > NESTING_DEPTH_MAX;
}

/// Notes what the expression's first operand is; true for that one.
bool begin_operand(Translation& t, int kind, int cell) {
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
    t.failed = t.failed || t.token->code != ')';
    if (!t.failed)
        take(t);
}

void translate_variable(Translation& t, const Token& variable) {
    const bool first = begin_operand(t, VALUE_NUMVAR, variable.subscripted ? -1 : variable.letter);
    if (!variable.subscripted)
        return emit(t, Operation::CELL, variable.letter, 1);
    enter(t);
    take(t);
    translate_level(t, LEVEL_SUM);
    --t.depth;
    translate_closing(t);
    emit(t, first ? Operation::FIRST_CELL : Operation::SUBSCRIPT, variable.letter, 0);
    t.expression.last_token = TOKEN_NUMVAR; // the subscript belongs to the variable
}

void translate_number(Translation& t, double number) {
    begin_operand(t, VALUE_NUMBER, -1);
    t.failed = t.failed || !in_number_range(number);
    emit(t, Operation::NUMBER, 0, 1, number);
}

bool translate_parenthesis(Translation& t) {
    const bool computed = translate_level(t, LEVEL_SUM);
    translate_closing(t);
    emit(t, Operation::CHECK_RANGE, 0, 0);
    return computed;
}

void translate_sign(Translation& t, int sign) {
    translate_factor(t);
    if (sign == '-')
        emit(t, Operation::NEGATE, 0, 0);
}

void translate_function(Translation& t, int token) {
    if (formula_of(*t.m.language, token) == nullptr) {
        t.failed = true;
        return;
    }
    begin_operand(t, VALUE_NUMBER, -1);
    translate_factor(t);
    emit(t, Operation::FUNCTION, token, 0);
}

/// Translates what stands in the place of a factor. Returns whether that is more than a literal or a variable.
bool translate_operand(Translation& t) {
    const Token& token = take(t);
    switch (token.code) {
    case TOKEN_NUMBER: translate_number(t, token.number); return false;
    case TOKEN_NUMVAR: translate_variable(t, token); return false;
    case TOKEN_PI: translate_number(t, std::numbers::pi); return true;
    case '(': return translate_parenthesis(t);
    case '+':
    case '-': translate_sign(t, token.code); return true;
    default: translate_function(t, token.code); return true;
    }
}

bool translate_factor(Translation& t) {
    enter(t);
    const bool computed = !t.failed && translate_operand(t);
    --t.depth;
    return computed;
}

Operation::Code operation_of(int token) {
    switch (token) {
    case '+': return Operation::ADD;
    case '-': return Operation::SUBTRACT;
    case '*': return Operation::MULTIPLY;
    case '/': return Operation::DIVIDE;
    default: return Operation::POWER;
    }
}

bool translate_level(Translation& t, Level level) {
    bool computed = translate_factor(t);
    while (!t.failed) {
        const Level found = level_of(t.token->code);
        if (found == LEVEL_FACTOR || found < level)
            break;
        const int token = take(t).code;
        translate_level(t, static_cast<Level>(found + 1));
        emit(t, operation_of(token), token, -1);
        computed = true;
    }
    return computed;
}

/// Translates the expression that begins at a token of the scan cache; its place in `expression_at`.
std::uint32_t translate(Machine& m, std::size_t first_token) {
    ExpressionCache& cache = m.expression_cache;
    const std::size_t operations = cache.operations.size();
    Translation t{m, cache, &m.scan_cache.tokens[first_token], {}};
    t.expression.computed = translate_level(t, LEVEL_SUM) ? 1 : 0;
    // An operand there is an error that the evaluator has ways of its own to read.
    t.failed = t.failed || is_operand_token(t.token->code) || t.token->code == TOKEN_LEXICAL_ERROR;
    if (t.failed || cache.expressions.size() == cache.expressions.capacity()) {
        cache.operations.resize(operations);
        return NO_CODE;
    }
    t.expression.operations = static_cast<std::uint32_t>(operations);
    t.expression.operation_count = static_cast<std::uint32_t>(cache.operations.size() - operations);
    t.expression.end_token = static_cast<std::uint32_t>(token_index(m.scan_cache, *t.token));
    t.expression.end_code = t.token->code;
    cache.expressions.push_back(t.expression);
    return static_cast<std::uint32_t>(cache.expressions.size());
}

/// The cell that a subscript leads to, if it holds a number that a factor may have.
Variable* number_cell(Machine& m, int letter, double subscript) {
    Variable* cell = variable_cell(m, letter, truncate_to_int(round6(subscript)));
    return cell != nullptr && cell->kind != 1 && in_number_range(cell->number) ? cell : nullptr;
}

/// Puts a result in the place of the two topmost numbers; the new top.
double* replace_two(double* top, double result) {
    top[-1] = result;
    return top - 1;
}

// The analyzer cannot know that the translation counts what is on the stack.
// NOLINTBEGIN(clang-analyzer-core.*)

/// Runs operations. `first` becomes the cell of a first operand with a subscript. False when they give up.
bool run_operations(Machine& m, std::span<const Operation> operations, Variable*& first, double& result) {
    double stack[STACK_SIZE + 1]; // from 1 on
    double* top = stack;
    for (const Operation& operation : operations) {
        switch (operation.code) {
        case Operation::NUMBER: *++top = operation.number; break;
        case Operation::CELL: {
            const Variable& cell = m.variables[static_cast<std::size_t>(operation.argument)];
            if (cell.kind == 1 || !in_number_range(cell.number))
                return false;
            *++top = cell.number;
            break;
        }
        case Operation::SUBSCRIPT:
        case Operation::FIRST_CELL: {
            Variable* cell = number_cell(m, operation.argument, *top);
            if (cell == nullptr)
                return false;
            first = operation.code == Operation::FIRST_CELL ? cell : first;
            *top = cell->number;
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
        case Operation::POWER: top = replace_two(top, arithmetic(operation.argument, top[-1], *top)); break;
        case Operation::NEGATE: *top = -*top; break;
        case Operation::FUNCTION:
            if (!formula_of(*m.language, operation.argument)(m, operation.argument, *top))
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

/// Leaves in the record what evaluating the expression's text leaves there.
void leave_result(Machine& m, const Expression& expression, Variable* first, double result) {
    const Token& end = m.scan_cache.tokens[expression.end_token];
    m.prev_token = expression.last_token;
    m.token = end.code;
    m.token_start = end.begin;
    m.scan_ptr = end.end;
    m.value.number = result;
    m.value.variable = first;
    m.value.kind = expression.kind;
    m.value.complete = expression.computed;
    m.operand_done = 1;
}

} // namespace

void reset_expressions(ExpressionCache& cache, std::size_t token_count) {
    cache = {};
    cache.expression_at.assign(token_count, 0);
    cache.expressions.reserve(token_count / 2);
    cache.operations.reserve(token_count);
}

const Expression* find_expression(Machine& m, const Token& token) {
    const std::size_t index = token_index(m.scan_cache, token);
    std::uint32_t& place = m.expression_cache.expression_at[index];
    if (place == 0)
        place = translate(m, index);
    return place != NO_CODE ? &m.expression_cache.expressions[place - 1] : nullptr;
}

bool run_expression(Machine& m, const Expression& expression, double& result) {
    if (m.nesting_depth + expression.nesting > NESTING_DEPTH_MAX)
        return false;
    Variable* first =
        expression.first_cell >= 0 ? &m.variables[static_cast<std::size_t>(expression.first_cell)] : nullptr;
    const std::span operations(&m.expression_cache.operations[expression.operations], expression.operation_count);
    if (!run_operations(m, operations, first, result))
        return false;
    leave_result(m, expression, first, result);
    return true;
}

} // namespace quillon
