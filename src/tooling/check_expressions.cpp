// SPDX-License-Identifier: MIT
// Expressions, assignments and relations.
#include "tooling/check_reader.h"

namespace quillon {
namespace {

constexpr std::size_t CELL_CAPACITY = 31;
constexpr std::size_t CELL_LITERAL_MAX = 7;
constexpr std::size_t DOLLAR_LITERAL_MAX = 30;

/// Reads the right operand of an operator; false after an error.
bool read_right(StatementReader& r, void (*level)(StatementReader&)) {
    r.value = {};
    level(r);
    if (!r.failed && r.value.kind == VALUE_NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "an operand is missing");
    return !r.failed;
}

void make_number(StatementReader& r, const CheckedOperand& left, std::optional<double> number) {
    r.value = left;
    r.value.number = number;
    r.value.length.reset();
    r.value.text.reset();
    r.value.complete = true;
    r.value.numeric = true;
}

std::optional<double> compute(TokenCode operation, const CheckedOperand& left, const CheckedOperand& right) {
    if (!left.number || !right.number)
        return std::nullopt;
    switch (operation) {
    case TOKEN_PLUS: return *left.number + *right.number;
    case TOKEN_MINUS: return *left.number - *right.number;
    case TOKEN_TIMES: return *left.number * *right.number;
    case TOKEN_DIVIDE: return *left.number / *right.number;
    default: return std::nullopt;
    }
}

/// "+" between two strings, or what may be strings.
void concatenate(StatementReader& r, const CheckedOperand& left) {
    const auto length = left.length && r.value.length ? std::optional(*left.length + *r.value.length) : std::nullopt;
    r.value = left;
    r.value.complete = true;
    r.value.length = length;
    r.value.text.reset();
}

bool types_differ(OperandType a, OperandType b) {
    return a != b && a != OperandType::EITHER && b != OperandType::EITHER;
}

void apply_sum(StatementReader& r, TokenCode operation, const char* at, const CheckedOperand& left) {
    const OperandType left_type = type_of(left);
    const OperandType right_type = type_of(r.value);
    const bool plus = operation == TOKEN_PLUS;
    if (plus && types_differ(left_type, right_type))
        return refuse(r, FindingKind::WRONG_TYPE, at, "\"+\" between a number and a string");
    if (!plus && (left_type == OperandType::STRING || right_type == OperandType::STRING))
        return refuse(r, FindingKind::WRONG_TYPE, at, "\"-\" takes no strings");
    const bool strings = left_type == OperandType::STRING || right_type == OperandType::STRING;
    const bool open = left_type == OperandType::EITHER && right_type == OperandType::EITHER;
    if (plus && (strings || open))
        return concatenate(r, left);
    make_number(r, left, compute(operation, left, r.value));
}

void apply_product(StatementReader& r, TokenCode operation, const char* at, const CheckedOperand& left) {
    if (is_string(left) || is_string(r.value))
        return refuse(r, FindingKind::WRONG_TYPE, at, "this operator takes no strings");
    if (operation == TOKEN_DIVIDE && r.value.number == 0.0)
        return refuse(r, FindingKind::DIVISION_BY_ZERO, at, "division by zero");
    make_number(r, left, compute(operation, left, r.value));
}

/// The operators of one level between operands of the level below.
template <typename IsOperator>
void read_level(StatementReader& r, void (*below)(StatementReader&), IsOperator is_operator,
                void (*apply)(StatementReader&, TokenCode, const char*, const CheckedOperand&)) {
    below(r);
    while (!r.failed && is_operator(r.token)) {
        const CheckedOperand left = r.value;
        const TokenCode operation = r.token;
        const char* at = r.scanned.begin;
        if (!read_right(r, below))
            return;
        apply(r, operation, at, left);
    }
}

void read_power(StatementReader& r) {
    read_level(
        r, read_factor, [](TokenCode t) { return t == TOKEN_POWER || t == TOKEN_EX || t == TOKEN_EM; }, apply_product);
}

void read_term(StatementReader& r) {
    read_level(
        r, read_power, [](TokenCode t) { return t == TOKEN_TIMES || t == TOKEN_DIVIDE; }, apply_product);
}

void read_signed(StatementReader& r) {
    const bool negative = r.token == TOKEN_MINUS;
    r.value = {};
    r.value.kind = VALUE_NUMBER;
    read_factor(r);
    if (r.value.number && negative)
        r.value.number = -*r.value.number;
    r.value.complete = true;
}

void read_parenthesised(StatementReader& r) {
    const char* at = r.scanned.begin;
    r.value.complete = false;
    read_sum(r);
    if (r.failed)
        return;
    if (r.token == TOKEN_CLOSE)
        next_behind_operand(r);
    else
        warn(r, FindingKind::MISSING_PARENTHESIS, at, "this \"(\" has no \")\"");
}

/// Where a factor stands, as far as statement words are concerned.
struct Place {
    bool at_start;
    bool may_lack;
};

/// The factor behind a sign or "(" stands where that stands.
void stay_at(StatementReader& r, Place place) {
    r.at_start = place.at_start;
    r.may_lack = place.may_lack;
}

void read_separator(StatementReader& r) {
    if (r.token == TOKEN_SEMICOLON ? r.kind == KIND_PRINT : r.kind != KIND_JUMP)
        refuse_token(r);
}

/// A statement within an expression leaves it without an operand, which is an error in most places; in the others the
/// statement is carried out and the rest means something else than it says.
void meet_keyword(StatementReader& r, const Token& word, bool may_lack) {
    const std::string text = describe(word) + " stands in an expression";
    if (may_lack && r.kind != KIND_PRINT)
        warn(r, FindingKind::KEYWORD_IN_EXPRESSION, word.begin, text);
    else
        refuse(r, FindingKind::KEYWORD_IN_EXPRESSION, word.begin, text);
    r.failed = true;
}

void read_word(StatementReader& r, Place place) {
    if (read_function(r))
        return;
    const Token word = r.scanned;
    if (word.code < STATEMENT_FIRST || word.code > STATEMENT_LAST)
        return refuse_token(r);
    if (!place.at_start && word.code != TOKEN_LET)
        return meet_keyword(r, word, place.may_lack);
    if (!descend(r))
        return;
    read_statement_word(r);
    --r.depth;
    if (word.code != TOKEN_LET)
        r.value = {};
}

void dispatch_factor(StatementReader& r, Place place) {
    switch (r.token) {
    case TOKEN_NUMBER:
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR:
    case TOKEN_STRING: return next_behind_operand(r);
    case TOKEN_PI:
        r.value = {};
        r.value.kind = VALUE_NUMBER;
        r.value.complete = true;
        return next_behind_operand(r);
    case TOKEN_OPEN: stay_at(r, place); return read_parenthesised(r);
    case TOKEN_PLUS:
    case TOKEN_MINUS: stay_at(r, place); return read_signed(r);
    case TOKEN_HASH:
    case TOKEN_SEMICOLON: return read_separator(r);
    default: return read_word(r, place);
    }
}

void read_whole_factor(StatementReader& r) {
    const Place place{r.at_start, r.may_lack};
    stay_at(r, {false, false});
    next(r);
    while (!r.failed && (r.token == TOKEN_BREAK || r.token == TOKEN_BREAKA))
        next(r);
    if (r.failed)
        return;
    if (is_statement_end(r.token))
        r.kind = KIND_NONE;
    else
        dispatch_factor(r, place);
}

// Assignments and relations.

bool is_relation(TokenCode token) {
    return token == TOKEN_LESS || token == TOKEN_GREATER || (token >= TOKEN_NE && token <= TOKEN_EQEQ);
}

void check_statement_end(StatementReader& r) {
    switch (r.token) {
    case TOKEN_END:
    case TOKEN_COLON:
    case TOKEN_CLOSE:
    case TOKEN_COMMA:
    case TOKEN_STOP:
    case TOKEN_END_WORD: return;
    case TOKEN_HASH:
        if (r.kind != KIND_JUMP)
            refuse_token(r);
        return;
    case TOKEN_SEMICOLON:
        if (r.kind != KIND_PRINT && r.kind != KIND_CONDITION)
            refuse_token(r);
        return;
    case TOKEN_THEN:
        if (r.kind != KIND_CONDITION)
            refuse_token(r);
        return;
    default:
        refuse(r, FindingKind::TEXT_AFTER_STATEMENT, r.scanned.begin,
               describe(r.scanned) + " behind a whole statement");
    }
}

/// Warns of characters that the target does not keep.
void check_length(StatementReader& r, const CheckedOperand& target) {
    const bool literal = r.value.kind == VALUE_STRING && !r.value.complete;
    const std::size_t literal_max = target.dollar ? DOLLAR_LITERAL_MAX : CELL_LITERAL_MAX;
    const std::size_t most = literal ? literal_max : CELL_CAPACITY;
    if (r.value.length && *r.value.length > most)
        warn(r, FindingKind::LITERAL_CUT, r.value.at,
             "the string is cut to " + std::to_string(most) + " of its " + std::to_string(*r.value.length) +
                 " characters");
}

void check_assigned(StatementReader& r, const CheckedOperand& target) {
    const bool string_source = r.value.kind == VALUE_STRVAR || r.value.kind == VALUE_STRING;
    const char* at = r.value.at != nullptr ? r.value.at : r.scanned.begin;
    if (type_of(r.value) == OperandType::NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "nothing to assign");
    else if (target.complete || (target.kind != VALUE_NUMVAR && target.kind != VALUE_STRVAR))
        refuse(r, FindingKind::BAD_TARGET, target.at, "only a variable can be assigned to");
    else if (target.kind == VALUE_NUMVAR && string_source)
        refuse(r, FindingKind::WRONG_TYPE, at, "a string is assigned to a variable without \"$\"");
    else if (target.kind == VALUE_STRVAR && !string_source)
        refuse(r, FindingKind::WRONG_TYPE, at, "a number is assigned to a variable with \"$\"");
    else
        check_length(r, target);
}

void read_assignment(StatementReader& r) {
    CheckedOperand target = r.value;
    target.at = target.at != nullptr ? target.at : r.scanned.begin;
    if (target.kind == VALUE_NONE)
        return refuse(r, FindingKind::BAD_TARGET, r.scanned.begin, "nothing stands before \"=\"");
    r.assigned = true;
    if (!read_right(r, read_sum))
        return;
    check_assigned(r, target);
    if (r.failed)
        return;
    r.value = target;
    r.value.complete = true;
    check_statement_end(r);
}

void read_relation(StatementReader& r) {
    const CheckedOperand left = r.value;
    const char* at = r.scanned.begin;
    if (!read_right(r, read_sum))
        return;
    if (types_differ(type_of(left), type_of(r.value)))
        refuse(r, FindingKind::WRONG_TYPE, at, "a number is compared with a string");
    r.value.complete = true;
    r.value.number.reset();
}

} // namespace

void read_sum(StatementReader& r) {
    read_level(
        r, read_term, [](TokenCode t) { return t == TOKEN_PLUS || t == TOKEN_MINUS; }, apply_sum);
}

void read_factor(StatementReader& r) {
    if (!descend(r))
        return;
    read_whole_factor(r);
    --r.depth;
}

void read_argument(StatementReader& r) {
    r.value = {};
    read_sum(r);
}

void read_statement(StatementReader& r) {
    read_sum(r);
    if (r.failed)
        return;
    if (r.token == TOKEN_EQUALS && r.kind != KIND_CONDITION)
        read_assignment(r);
    else if (r.token == TOKEN_EQUALS || is_relation(r.token))
        read_relation(r);
    else if (r.token == TOKEN_PRINT)
        read_print_list(r);
    else if (r.token == TOKEN_INPUT)
        read_input_list(r);
    else
        check_statement_end(r);
}

} // namespace quillon
