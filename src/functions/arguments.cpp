// SPDX-License-Identifier: MIT
// Shared argument readers and results.
#include "functions/arguments.h"

#include "core/interpreter.h"
#include "core/variables.h"

#include <cmath>
#include <numbers>

namespace quillon {

bool open_arguments(Machine& m, MessageId missing) {
    if (next_token(m) != TOKEN_OPEN)
        raise_error(m, ERROR_SYNTAX, missing);
    return !failed(m);
}

bool read_number(Machine& m, const ArgumentErrors& errors, double& x) {
    x = eval_argument(m);
    if (failed(m))
        return false;
    if (m.eval.value.kind == VALUE_NONE && errors.missing != ArgumentErrors::ACCEPTED)
        raise_error(m, ERROR_SYNTAX, {errors.section, errors.missing});
    else if (m.eval.value.kind == VALUE_STRVAR)
        raise_error(m, ERROR_SYNTAX, {errors.section, errors.string_variable});
    else if (value_type(m) == TYPE_STRING)
        raise_error(m, ERROR_SYNTAX, {errors.section, errors.string});
    return !failed(m);
}

bool require_comma(Machine& m, MessageId missing) {
    if (m.eval.token != TOKEN_COMMA)
        raise_error(m, ERROR_SYNTAX, missing);
    return !failed(m);
}

bool close_arguments(Machine& m, MessageId missing) {
    if (m.eval.token != TOKEN_CLOSE) {
        raise_error(m, ERROR_SYNTAX, missing);
        return false;
    }
    next_token_after_operand(m);
    return true;
}

void pass_closing(Machine& m) {
    if (m.eval.token == TOKEN_CLOSE)
        next_token_after_operand(m);
}

double number_result(Machine& m, double x) {
    m.eval.value.kind = VALUE_NUMBER;
    m.eval.value.cell = NO_CELL;
    m.eval.value.number = x;
    m.eval.value.complete = true;
    return x;
}

double string_result(Machine& m, std::string_view text) {
    m.eval.value.kind = VALUE_STRING;
    m.eval.value.cell = NO_CELL;
    m.eval.value.number = 0;
    m.eval.value.complete = true;
    m.eval.value.text = text;
    return 0;
}

double to_radians(const Machine& m, double angle) {
    switch (m.settings.angle_unit) {
    case ANGLE_DEG: return angle * std::numbers::pi / 180;
    case ANGLE_GRA: return angle * std::numbers::pi / 200;
    default: return angle;
    }
}

double from_radians(const Machine& m, double radians) {
    switch (m.settings.angle_unit) {
    case ANGLE_DEG: return radians * 180 / std::numbers::pi;
    case ANGLE_GRA: return radians * 200 / std::numbers::pi;
    default: return radians;
    }
}

std::int32_t low_32_bits(double x) {
    constexpr double LIMIT = 9223372036854775808.0; // 2^63
    if (!(std::fabs(x) < LIMIT))
        return 0;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(x)));
}

} // namespace quillon
