// SPDX-License-Identifier: MIT
// Reads arguments as core/arguments does, by the same rows, and reports what the machine would refuse whatever the
// variables hold.
#include "tooling/check_reader.h"

#include "functions/function_table.h"
#include "tooling/signature_text.h"

namespace quillon {
namespace {

/// Where an argument is, and of which word.
struct Place {
    const Token& word;
    const Signature& signature;
    const char* at;
};

bool refuses(const Argument& argument, OperandForm form) {
    return argument.refused[static_cast<std::size_t>(form)] != ACCEPTED;
}

/// Whether an argument refuses the operand just read, whatever a variable holds.
bool is_refused(const Argument& argument, const CheckedOperand& operand) {
    switch (operand.kind) {
    case VALUE_NUMBER: return refuses(argument, OperandForm::NUMBER);
    case VALUE_NUMVAR:
        return refuses(argument, OperandForm::NUMBER_VARIABLE) && refuses(argument, OperandForm::VARIABLE_WITH_STRING);
    case VALUE_STRVAR: return refuses(argument, OperandForm::STRING_VARIABLE);
    case VALUE_STRING: return refuses(argument, OperandForm::STRING);
    case VALUE_CURSOR: return refuses(argument, OperandForm::CURSOR);
    default: return refuses(argument, OperandForm::NONE);
    }
}

void read_extent(StatementReader& r, Extent extent) {
    r.value = {};
    switch (extent) {
    case Extent::FACTOR: return read_factor(r);
    case Extent::STATEMENT: return read_statement(r);
    default: return read_argument(r);
    }
}

void check_form(StatementReader& r, const Argument& argument, const Place& place) {
    const bool unchecked = argument.unchecked_at_end && is_statement_end(r.token);
    if (unchecked || !is_refused(argument, r.value))
        return;
    const std::string expected = argument.is_text ? "a string" : "a number";
    const std::string usage = signature_text(place.signature);
    if (r.value.kind == VALUE_NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, expected + " is missing: " + usage);
    else
        refuse(r, FindingKind::WRONG_TYPE, place.at, describe(place.word) + " takes " + expected + " here: " + usage);
}

/// The number that the machine goes by, where the text tells it: what is not a number counts as 0.
std::optional<double> known_number(const Argument& argument, const CheckedOperand& operand) {
    const OperandType type = type_of(operand);
    const std::optional<double> number =
        type == OperandType::NONE || type == OperandType::STRING ? std::optional(0.0) : operand.number;
    return number ? std::optional(converted(argument.conversion, *number)) : std::nullopt;
}

/// A number that the text tells must lie in the domain, whatever the angle unit is at that time.
void check_value(StatementReader& r, const Argument& argument, const Place& place) {
    const std::optional<double> x = known_number(argument, r.value);
    const bool inside = !has_domain(argument) || !x || in_domain(argument.domain, ANGLE_DEG, *x) ||
                        in_domain(argument.domain, ANGLE_GRA, *x);
    if (!inside)
        refuse(r, FindingKind::OUT_OF_RANGE, place.at,
               describe(place.word) + " takes " + domain_text(argument) + ", not " + shown_number(*x) + ": " +
                   signature_text(place.signature));
    else if (argument.text_form != nullptr && r.value.text && !argument.text_form(*r.value.text))
        refuse(r, FindingKind::OUT_OF_RANGE, place.at, describe(place.word) + " reads " + argument.text_rule);
}

/// Reads an argument and checks it; returns its number, where the text tells it.
std::optional<double> read_one(StatementReader& r, const Signature& signature, const Argument& argument,
                               const Token& word) {
    const Place place{word, signature, skip_blanks(r.scan)};
    r.may_lack = argument.unchecked_at_end || !refuses(argument, OperandForm::NONE);
    read_extent(r, argument.extent);
    if (!r.failed)
        check_form(r, argument, place);
    if (!r.failed)
        check_value(r, argument, place);
    return known_number(argument, r.value);
}

void require(StatementReader& r, TokenCode token, const char* what, const Signature& signature) {
    if (!r.failed && r.token != token)
        refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin,
               std::string(what) + " is missing: " + signature_text(signature));
}

void read_closing(StatementReader& r, const Signature& signature) {
    if (signature.closing == Closing::REQUIRED)
        require(r, TOKEN_CLOSE, "\")\"", signature);
    if (r.failed || signature.closing == Closing::NONE)
        return;
    const bool closed = r.token == TOKEN_CLOSE || !signature.opened;
    if (!closed)
        warn(r, FindingKind::MISSING_PARENTHESIS, r.scanned.begin,
             signature.closing == Closing::ANY ? "\")\" is missing; the machine passes over what stands in its place"
                                               : "\")\" is missing");
    if (closed || signature.closing == Closing::ANY)
        next_behind_operand(r);
}

/// Leaves the result of a word as the operand.
void set_result(StatementReader& r, Result result) {
    constexpr ValueKind KINDS[] = {VALUE_NONE, VALUE_NUMBER, VALUE_STRING, VALUE_CURSOR};
    r.value = {};
    r.value.kind = KINDS[static_cast<std::size_t>(result)];
    r.value.complete = result == Result::NUMBER || result == Result::STRING;
}

} // namespace

void read_by_signature(StatementReader& r, const Signature& signature) {
    const Token word = r.scanned;
    if (signature.opened) {
        next(r);
        require(r, TOKEN_OPEN, "\"(\"", signature);
    }
    std::optional<double> known[ARGUMENTS_MAX];
    std::size_t count = 0;
    for (const Argument& argument : signature.arguments) {
        if (count > 0 && r.token != TOKEN_COMMA && argument.optional)
            break;
        if (count > 0)
            require(r, TOKEN_COMMA, "\",\"", signature);
        if (r.failed)
            return;
        known[count++] = read_one(r, signature, argument, word);
    }
    const Agreement& agreement = signature.agreement;
    if (agreement.holds != nullptr && known[0] && known[1] && !agreement.holds(*known[0], *known[1]))
        refuse(r, FindingKind::OUT_OF_RANGE, word.begin, describe(word) + " takes " + agreement.rule);
}

bool read_function(StatementReader& r) {
    const Signature* signature = find_function_signature(r.token);
    if (signature == nullptr)
        return false;
    const char* at = r.scanned.begin;
    read_by_signature(r, *signature);
    read_closing(r, *signature);
    set_result(r, signature->result);
    r.value.at = at;
    return true;
}

} // namespace quillon
