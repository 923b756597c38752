// The four operator levels and the factor: literals, variables, signs, parentheses, functions, and the words that
// statements begin with.
#include "core/arithmetic.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/variables.h"

#include <numbers>

namespace quillon {
namespace {

bool failed(const Machine& m) { return m.error_code != ERROR_NONE; }

double eval_level(Machine& m, Level level);

/// Reads the right operand of an operator of this level; false after an error, a missing operand included.
bool read_right_operand(Machine& m, Level level, double& right) {
    m.value.kind = VALUE_NONE;
    right = level == LEVEL_POWER ? eval_factor(m) : eval_level(m, static_cast<Level>(level + 1));
    if (!failed(m) && m.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, MESSAGE_NO_OPERAND);
    return !failed(m);
}

/// Makes a computed number of the value: the record of the left operand with the result in it.
double number_result(Machine& m, int kind, Variable* variable, double result) {
    m.value.kind = kind;
    m.value.variable = variable;
    m.value.number = result;
    m.value.complete = 1;
    m.operand_done = 1;
    return result;
}

double concatenate(Machine& m) {
    Value left = m.value;
    double unused = 0;
    if (!read_right_operand(m, LEVEL_SUM, unused))
        return 0;
    if (value_type(m.value) != TYPE_STRING) {
        raise_error(m, ERROR_VARIABLE, MESSAGE_TYPES_DIFFER);
        return 0;
    }
    left.text.append(m.value.text);
    left.complete = 1;
    m.value = left;
    m.operand_done = 1;
    return 0;
}

double add_or_subtract(Machine& m, double left) {
    const int operation = m.token;
    const ValueType left_type = value_type(m.value);
    if (operation == '+' && left_type == TYPE_STRING)
        return concatenate(m);
    const int kind = m.value.kind;
    Variable* variable = m.value.variable;
    double right = 0;
    if (!read_right_operand(m, LEVEL_SUM, right))
        return 0;
    const ValueType right_type = value_type(m.value);
    if (operation == '+' && left_type != right_type) {
        raise_error(m, ERROR_VARIABLE, MESSAGE_TYPES_DIFFER);
        return 0;
    }
    if (left_type == TYPE_STRING || right_type == TYPE_STRING) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_OPERAND);
        return 0;
    }
    return number_result(m, kind, variable, operation == '+' ? left + right : left - right);
}

/// Multiplication, division and powers: operators that take numbers only.
double apply_arithmetic(Machine& m, Level level, double left) {
    const int operation = m.token;
    const bool left_is_string = value_type(m.value) == TYPE_STRING;
    const int kind = m.value.kind;
    Variable* variable = m.value.variable;
    double right = 0;
    if (!read_right_operand(m, level, right))
        return 0;
    if (left_is_string || value_type(m.value) == TYPE_STRING) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STRING_OPERAND);
        return 0;
    }
    if (operation == '/' && right == 0) {
        raise_error(m, ERROR_ARITHMETIC, MESSAGE_DIVISION_BY_ZERO);
        return 0;
    }
    return number_result(m, kind, variable, arithmetic(operation, left, right));
}

/// Goes on behind a left operand as long as operators of this level, or tighter ones, follow.
double eval_operators(Machine& m, Level level, double left) {
    while (!failed(m)) {
        const Level found = level_of(m.token);
        if (found == LEVEL_FACTOR || found < level)
            break;
        left = found == LEVEL_SUM ? add_or_subtract(m, left) : apply_arithmetic(m, found, left);
    }
    return left;
}

double eval_level(Machine& m, Level level) { return eval_operators(m, level, eval_factor(m)); }

double signed_factor(Machine& m) {
    const bool negative = m.token == '-';
    m.value.kind = VALUE_NUMBER;
    m.value.number = 0;
    const double result = eval_factor(m);
    if (failed(m))
        return 0;
    m.value.number = negative ? -result : result;
    m.value.complete = 1;
    m.operand_done = 1;
    return m.value.number;
}

/// A missing ")" is no error: evaluation goes on with the token that stands there.
double parenthesised(Machine& m) {
    m.value.complete = 0;
    const double result = eval_sum(m);
    if (!failed(m) && m.token == ')') {
        next_token_behind_operand(m);
        m.operand_done = 1;
    }
    return result;
}

/// The number of the literal or variable just read; 0 of a string.
double operand_number(const Machine& m) {
    return m.value.kind == VALUE_NUMBER || m.value.kind == VALUE_NUMVAR ? m.value.number : 0;
}

double literal_or_variable(Machine& m) {
    const double result = operand_number(m);
    next_token_behind_operand(m);
    m.operand_done = 1;
    return result;
}

double constant_pi(Machine& m) {
    m.value.kind = VALUE_NUMBER;
    m.value.number = std::numbers::pi;
    m.value.variable = nullptr;
    m.value.complete = 1;
    next_token_behind_operand(m);
    m.operand_done = 1;
    return std::numbers::pi;
}

double call_function(Machine& m, FunctionHandler function) {
    const double result = function(m);
    m.value.complete = 1;
    m.operand_done = 1;
    return result;
}

/// Runs a statement word. Only LET leaves an operand: its target.
double run_statement_word(Machine& m, const Statement& statement) {
    const int word = m.token;
    if (statement.kind >= 0)
        m.stmt_kind = statement.kind;
    m.operand_done = 0;
    if (word == TOKEN_PRINT || word == TOKEN_INPUT)
        return 0; // their lists are eval_statement's
    if (!descend(m))
        return 0;
    statement.handler(m);
    ascend(m);
    m.operand_done = 0;
    if (word != TOKEN_LET)
        m.value.kind = VALUE_NONE;
    return 0;
}

double separator_in_place_of_operand(Machine& m) {
    if (m.token == ';') {
        if (m.stmt_kind == KIND_PRINT)
            raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":';'");
        m.operand_done = 0;
    } else if (m.stmt_kind != KIND_JUMP) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN);
    }
    return 0;
}

double word_factor(Machine& m) {
    if (const FunctionHandler function = function_of(*m.language, m.token))
        return call_function(m, function);
    const Statement statement = statement_of(*m.language, m.token);
    if (statement.handler != nullptr)
        return run_statement_word(m, statement);
    raise_unknown_token(m);
    return 0;
}

double dispatch_factor(Machine& m) {
    switch (m.token) {
    case TOKEN_NUMBER:
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR:
    case TOKEN_STRING: return literal_or_variable(m);
    case TOKEN_PI: return constant_pi(m);
    case '(': return parenthesised(m);
    case '+':
    case '-': return signed_factor(m);
    case '#':
    case ';': return separator_in_place_of_operand(m);
    default: return word_factor(m);
    }
}

/// The number of a factor; 0 and an error where it is none that a factor may have.
double checked_number(Machine& m, double number) {
    if (in_number_range(number))
        return number;
    raise_error(m, ERROR_ARITHMETIC, MESSAGE_NUMBER_RANGE, ":(1*10^-99 <= |N| < 1*10^100)");
    return 0;
}

/// Reads the token that a factor begins with. BREAK and BREAKA are passed over, BREAK with the host's trace command.
/// False when there is no factor: at the end of the statement, and after an error.
bool read_factor_token(Machine& m) {
    next_token(m);
    if (m.token >= TOKEN_NUMBER && m.token <= TOKEN_STRING)
        return !failed(m); // an operand needs none of what follows
    while (m.token == TOKEN_BREAK || m.token == TOKEN_BREAKA) {
        if (m.token == TOKEN_BREAK)
            m.host.run_command(COMMAND_TRACE);
        next_token(m);
    }
    if (failed(m))
        return false;
    if (m.token < TOKEN_COLON) { // the detail has been composed
        enter_error(m, static_cast<ErrorCode>(m.token));
        return false;
    }
    if (is_statement_end(m.token)) {
        m.stmt_kind = KIND_NONE;
        return false;
    }
    if (m.stmt_kind == KIND_PRINT && m.token >= STATEMENT_WORD) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_STATEMENT_IN_PRINT, ":0x%04x (TOKEN_ID)", static_cast<unsigned>(m.token));
        return false;
    }
    return true;
}

/// Whether a token of the scan cache is an operand that is a whole expression: no operator follows it, and nothing that
/// is a fault there.
bool stands_alone(const Token& token) {
    if (!is_operand_token(token.code) || token.subscripted)
        return false;
    const int next = (&token)[1].code; // there is one: a line's last token is its end
    return level_of(next) == LEVEL_FACTOR && !is_operand_token(next) && next != TOKEN_LEXICAL_ERROR;
}

double eval_lone_operand(Machine& m, const Token& token) {
    take_operand(m, token);
    take_token(m, (&token)[1]);
    m.operand_done = 1;
    return checked_number(m, operand_number(m));
}

/// Runs a statement word of the scan cache in the place of an expression. False, with nothing changed, where that is an
/// error.
bool run_known_word(Machine& m, const Token& token, double& result) {
    const Statement statement = statement_of(*m.language, token.code);
    if (statement.handler == nullptr || m.stmt_kind == KIND_PRINT)
        return false;
    take_token(m, token);
    ++m.nesting_depth;
    run_statement_word(m, statement);
    --m.nesting_depth;
    if (!is_statement_end(m.token))
        result = eval_operators(m, LEVEL_SUM, 0);
    return true;
}

/// Evaluates what the caches know: a statement word, a single operand, the end of a statement, an expression that has
/// code. Does what the levels below do, without descending into them. False, with nothing changed, for all else.
bool eval_known(Machine& m, double& result) {
    const Token* token = find_token(m.scan_cache, m.scan_ptr);
    if (token == nullptr || failed(m) || m.nesting_depth >= NESTING_DEPTH_MAX)
        return false;
    if (token->code >= STATEMENT_FIRST)
        return run_known_word(m, *token, result);
    if (stands_alone(*token)) {
        result = eval_lone_operand(m, *token);
        return true;
    }
    if (is_statement_end(token->code)) {
        take_statement_end(m, *token);
        return true;
    }
    const Expression* expression = find_expression(m, *token);
    return expression != nullptr && run_expression(m, *expression, result);
}

} // namespace

double eval_sum(Machine& m) {
    double result = 0;
    return eval_known(m, result) ? result : eval_level(m, LEVEL_SUM);
}

double eval_factor(Machine& m) {
    if (!descend(m))
        return 0;
    const double result = read_factor_token(m) ? dispatch_factor(m) : 0;
    ascend(m);
    return failed(m) ? 0 : checked_number(m, result);
}

bool descend(Machine& m) {
    if (m.nesting_depth >= NESTING_DEPTH_MAX) {
        raise_unknown_token(m);
        return false;
    }
    ++m.nesting_depth;
    return true;
}

void ascend(Machine& m) { --m.nesting_depth; }

double eval_argument(Machine& m) {
    m.value.kind = VALUE_NONE;
    return eval_sum(m);
}

} // namespace quillon
