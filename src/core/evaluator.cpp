// SPDX-License-Identifier: MIT
// The four operator levels and the factor: literals, variables, signs, parentheses, functions, and the words that
// statements begin with.
#include "core/errors.h"
#include "core/fast_path.h"
#include "core/interpreter.h"
#include "core/variables.h"

#include <numbers>

namespace quillon {
namespace {

double eval_level(Machine& m, Level level);

/// Reads the right operand of an operator of this level; false after an error, a missing operand included.
bool read_right_operand(Machine& m, Level level, double& right) {
    m.eval.value.kind = VALUE_NONE;
    right = level == Level::POWER ? eval_factor(m) : eval_level(m, next_level(level));
    if (!failed(m) && m.eval.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    return !failed(m);
}

/// Makes a computed number of the value: the record of the left operand with the result in it.
double number_result(Machine& m, ValueKind kind, CellIndex cell, double result) {
    m.eval.value.kind = kind;
    m.eval.value.cell = cell;
    m.eval.value.number = result;
    m.eval.value.complete = true;
    m.eval.operand_done = true;
    return result;
}

double concatenate(Machine& m) {
    Value left = m.eval.value;
    double unused = 0;
    if (!read_right_operand(m, Level::SUM, unused))
        return 0;
    if (value_type(m) != TYPE_STRING) {
        raise_error(m, ERROR_VARIABLE, MESSAGE_TYPES_DIFFER);
        return 0;
    }
    left.text.append(m.eval.value.text);
    left.complete = true;
    m.eval.value = left;
    m.eval.operand_done = true;
    return 0;
}

double add_or_subtract(Machine& m, double left) {
    const TokenCode operation = m.eval.token;
    const ValueType left_type = value_type(m);
    if (operation == TOKEN_PLUS && left_type == TYPE_STRING)
        return concatenate(m);
    const ValueKind kind = m.eval.value.kind;
    const CellIndex cell = m.eval.value.cell;
    double right = 0;
    if (!read_right_operand(m, Level::SUM, right))
        return 0;
    const ValueType right_type = value_type(m);
    if (operation == TOKEN_PLUS && left_type != right_type) {
        raise_error(m, ERROR_VARIABLE, MESSAGE_TYPES_DIFFER);
        return 0;
    }
    if (left_type == TYPE_STRING || right_type == TYPE_STRING) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_OPERAND);
        return 0;
    }
    return number_result(m, kind, cell, operation == TOKEN_PLUS ? left + right : left - right);
}

/// Multiplication, division and powers: operators that take numbers only.
double apply_arithmetic(Machine& m, Level level, double left) {
    const TokenCode operation = m.eval.token;
    const bool left_is_string = value_type(m) == TYPE_STRING;
    const ValueKind kind = m.eval.value.kind;
    const CellIndex cell = m.eval.value.cell;
    double right = 0;
    if (!read_right_operand(m, level, right))
        return 0;
    if (left_is_string || value_type(m) == TYPE_STRING) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_OPERAND);
        return 0;
    }
    if (operation == TOKEN_DIVIDE && right == 0) {
        raise_error(m, ERROR_ARITHMETIC, MESSAGE_DIVISION_BY_ZERO);
        return 0;
    }
    return number_result(m, kind, cell, arithmetic(operation, left, right));
}

double eval_level(Machine& m, Level level) { return eval_operators(m, level, eval_factor(m)); }

double signed_factor(Machine& m) {
    const bool negative = m.eval.token == TOKEN_MINUS;
    m.eval.value.kind = VALUE_NUMBER;
    m.eval.value.number = 0;
    const double result = eval_factor(m);
    if (failed(m))
        return 0;
    m.eval.value.number = negative ? -result : result;
    m.eval.value.complete = true;
    m.eval.operand_done = true;
    return m.eval.value.number;
}

/// A missing ")" is no error: evaluation goes on with the token that stands there.
double parenthesised(Machine& m) {
    m.eval.value.complete = false;
    const double result = eval_sum(m);
    if (!failed(m) && m.eval.token == TOKEN_CLOSE) {
        next_token_after_operand(m);
        m.eval.operand_done = true;
    }
    return result;
}

double literal_or_variable(Machine& m) {
    const double result = operand_number(m);
    next_token_after_operand(m);
    m.eval.operand_done = true;
    return result;
}

double constant_pi(Machine& m) {
    m.eval.value.kind = VALUE_NUMBER;
    m.eval.value.number = std::numbers::pi;
    m.eval.value.cell = NO_CELL;
    m.eval.value.complete = true;
    next_token_after_operand(m);
    m.eval.operand_done = true;
    return std::numbers::pi;
}

double call_function(Machine& m, FunctionHandler function) {
    const double result = function(m);
    m.eval.value.complete = true;
    m.eval.operand_done = true;
    return result;
}

double separator_in_place_of_operand(Machine& m) {
    if (m.eval.token == TOKEN_SEMICOLON) {
        if (m.eval.stmt_kind == KIND_PRINT)
            raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":';'");
        m.eval.operand_done = false;
    } else if (m.eval.stmt_kind != KIND_JUMP) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN);
    }
    return 0;
}

double word_factor(Machine& m) {
    if (const FunctionHandler function = function_of(*m.around->language, m.eval.token))
        return call_function(m, function);
    const Statement statement = statement_of(*m.around->language, m.eval.token);
    if (statement.handler != nullptr)
        run_statement_word(m, statement);
    else
        raise_unknown_token(m);
    return 0;
}

double dispatch_factor(Machine& m) {
    switch (m.eval.token) {
    case TOKEN_NUMBER:
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR:
    case TOKEN_STRING: return literal_or_variable(m);
    case TOKEN_PI: return constant_pi(m);
    case TOKEN_OPEN: return parenthesised(m);
    case TOKEN_PLUS:
    case TOKEN_MINUS: return signed_factor(m);
    case TOKEN_HASH:
    case TOKEN_SEMICOLON: return separator_in_place_of_operand(m);
    default: return word_factor(m);
    }
}

/// Reads the token that a factor begins with. BREAK and BREAKA are passed over, BREAK with the host's trace command.
/// False when there is no factor: at the end of the statement, and after an error.
bool read_factor_token(Machine& m) {
    next_token(m);
    if (m.eval.token >= TOKEN_NUMBER && m.eval.token <= TOKEN_STRING)
        return !failed(m); // an operand needs none of what follows
    while (m.eval.token == TOKEN_BREAK || m.eval.token == TOKEN_BREAKA) {
        if (m.eval.token == TOKEN_BREAK)
            m.around->host.run_command(COMMAND_TRACE);
        next_token(m);
    }
    if (failed(m))
        return false;
    if (is_fault(m.eval.token)) {
        enter_error(m, error_of(m.eval.token));
        return false;
    }
    if (is_statement_end(m.eval.token)) {
        m.eval.stmt_kind = KIND_NONE;
        return false;
    }
    if (m.eval.stmt_kind == KIND_PRINT && m.eval.token >= STATEMENT_WORD) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STATEMENT_IN_PRINT, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
        return false;
    }
    return true;
}

} // namespace

double eval_operators(Machine& m, Level level, double left) {
    while (!failed(m)) {
        const Level found = level_of(m.eval.token);
        if (found == Level::FACTOR || found < level)
            break;
        left = found == Level::SUM ? add_or_subtract(m, left) : apply_arithmetic(m, found, left);
    }
    return left;
}

void run_statement_word(Machine& m, const Statement& statement) {
    const TokenCode word = m.eval.token;
    m.eval.stmt_kind = statement.kind.value_or(m.eval.stmt_kind);
    m.eval.operand_done = false;
    if (word == TOKEN_PRINT || word == TOKEN_INPUT)
        return; // their lists are eval_statement's
    if (!descend(m))
        return;
    statement.handler(m);
    ascend(m);
    m.eval.operand_done = false;
    if (word != TOKEN_LET)
        m.eval.value.kind = VALUE_NONE;
}

double checked_number(Machine& m, double number) {
    if (in_number_range(number))
        return number;
    raise_error(m, ERROR_ARITHMETIC, MESSAGE_NUMBER_RANGE, ":(1*10^-99 <= |N| < 1*10^100)");
    return 0;
}

double eval_sum(Machine& m) {
    double result = 0;
    return try_evaluate(m, result) ? result : eval_level(m, Level::SUM);
}

double eval_factor(Machine& m) {
    if (!descend(m))
        return 0;
    const double result = read_factor_token(m) ? dispatch_factor(m) : 0;
    ascend(m);
    return failed(m) ? 0 : checked_number(m, result);
}

bool descend(Machine& m) {
    if (m.eval.nesting_depth >= NESTING_DEPTH_MAX) {
        raise_unknown_token(m);
        return false;
    }
    ++m.eval.nesting_depth;
    return true;
}

void ascend(Machine& m) { --m.eval.nesting_depth; }

double eval_argument(Machine& m) {
    m.eval.value.kind = VALUE_NONE;
    return eval_sum(m);
}

} // namespace quillon
