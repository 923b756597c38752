// SPDX-License-Identifier: MIT
// The reader of arguments: one loop over a word's row. It is on the stack once for each nested call, so it keeps only
// numbers there.
#include "core/arguments.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/variables.h"

namespace quillon {
namespace {

OperandForm form_of(const Machine& m) {
    switch (m.eval.value.kind) {
    case VALUE_NUMBER: return OperandForm::NUMBER;
    case VALUE_NUMVAR:
        return value_type(m) == TYPE_STRING ? OperandForm::VARIABLE_WITH_STRING : OperandForm::NUMBER_VARIABLE;
    case VALUE_STRVAR: return OperandForm::STRING_VARIABLE;
    case VALUE_STRING: return OperandForm::STRING;
    case VALUE_CURSOR: return OperandForm::CURSOR;
    default: return OperandForm::NONE;
    }
}

double evaluate(Machine& m, Extent extent) {
    m.eval.value.kind = VALUE_NONE;
    switch (extent) {
    case Extent::FACTOR: return eval_factor(m);
    case Extent::STATEMENT: return eval_statement(m);
    default: return eval_argument(m);
    }
}

/// Not inlined: the buffer must not lie in the frames of nested calls.
[[gnu::noinline]] void raise_value_error(Machine& m, const char* section, const ValueError& error, double x = 0) {
    constexpr int SHOWN_DIGITS = 6;
    const MessageId message{section, error.text};
    char shown[400];
    switch (error.detail) {
    case Detail::NUMBER: return raise_error(m, error.code, message, " [%s]", format_general(x, SHOWN_DIGITS).c_str());
    case Detail::WHOLE: return raise_error(m, error.code, message, " [%d]", truncate_to_int(x));
    case Detail::START: return raise_error(m, error.code, message, " S=[%d]", truncate_to_int(x));
    case Detail::TOKEN: return raise_error(m, error.code, message, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
    case Detail::TEXT:
        return raise_error(m, error.code, message, "\"%s\"", escape_text(m.eval.value.text, shown, sizeof shown));
    default: return raise_error(m, error.code, message);
    }
}

bool open(Machine& m, const Signature& signature) {
    if (signature.opened && next_token(m) != TOKEN_OPEN)
        raise_error(m, ERROR_SYNTAX, {signature.section, 0});
    return !failed(m);
}

/// Whether another argument follows: after its "," it must. Reports a "," that is missing.
bool passes_comma(Machine& m, const Signature& signature, const Argument& argument) {
    if (m.eval.token == TOKEN_COMMA)
        return true;
    if (!argument.optional)
        raise_value_error(m, signature.section, signature.no_comma);
    return false;
}

bool read_argument(Machine& m, const Signature& signature, const Argument& argument, double& x) {
    if (argument.is_text)
        m.eval.value.text.clear(); // what is left out is empty
    if (!read_operand(m, signature, argument, x))
        return false;
    x = converted(argument.conversion, x);
    if (has_domain(argument) && !in_domain(argument.domain, m.settings.angle_unit, x))
        raise_domain_error(m, signature, argument, x);
    else if (argument.text_form != nullptr && !argument.text_form(m.eval.value.text))
        raise_value_error(m, signature.section, argument.bad_text);
    return !failed(m);
}

bool check_agreement(Machine& m, const Signature& signature, const Arguments& arguments) {
    const Agreement& agreement = signature.agreement;
    if (agreement.holds != nullptr && !agreement.holds(arguments.number[0], arguments.number[1]))
        raise_value_error(m, signature.section, agreement.error);
    return !failed(m);
}

bool require_closing(Machine& m, const Signature& signature) {
    if (signature.closing != Closing::REQUIRED)
        return true;
    if (m.eval.token != TOKEN_CLOSE) {
        raise_error(m, ERROR_SYNTAX, {signature.section, signature.not_closed});
        return false;
    }
    next_token_after_operand(m);
    return true;
}

} // namespace

bool read_operand(Machine& m, const Signature& signature, const Argument& argument, double& x) {
    x = evaluate(m, argument.extent);
    if (failed(m))
        return false;
    const TextNumber text = argument.refused[static_cast<std::size_t>(form_of(m))];
    if (text == ACCEPTED || (argument.unchecked_at_end && is_statement_end(m.eval.token)))
        return true;
    raise_value_error(m, signature.section, {ERROR_SYNTAX, text, argument.form_detail});
    return false;
}

void raise_domain_error(Machine& m, const Signature& signature, const Argument& argument, double x) {
    ValueError error = x < argument.domain.lowest ? argument.below : argument.above;
    if (argument.domain.by_unit)
        error.text = static_cast<TextNumber>(error.text + number_of(m.settings.angle_unit));
    raise_value_error(m, signature.section, error, x);
}

bool read_arguments(Machine& m, const Signature& signature, Arguments& arguments) {
    if (!open(m, signature))
        return false;
    for (const Argument& argument : signature.arguments) {
        if (arguments.count > 0 && !passes_comma(m, signature, argument))
            break;
        if (!read_argument(m, signature, argument, arguments.number[arguments.count]))
            return false;
        ++arguments.count;
    }
    return !failed(m) && check_agreement(m, signature, arguments) && require_closing(m, signature);
}

void pass_closing(Machine& m, const Signature& signature) {
    const bool passes = signature.closing == Closing::OPTIONAL && m.eval.token == TOKEN_CLOSE;
    if (passes || signature.closing == Closing::ANY)
        next_token_after_operand(m);
}

} // namespace quillon
