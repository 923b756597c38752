// The prefix functions: one table of section, rounding, domain and formula, and the reader that all of them share.
#include "functions/numeric.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"

#include <cmath>

namespace quillon {
namespace {

/// A function of one factor. Message 0 of its section is for a missing operand, 1 for a string.
struct PrefixFunction {
    const char* section;
    bool rounds_argument; ///< to six decimals, before anything else
    double (*formula)(double);
};

double sign_of(double x) { return x > 0 ? 1 : (x < 0 ? -1 : 0); }

//                              section  rounds  formula
constexpr PrefixFunction INT_{"INT", true, [](double x) { return std::floor(x); }};
constexpr PrefixFunction ABS_{"ABS", true, [](double x) { return std::fabs(x); }};
constexpr PrefixFunction SGN_{"SGN", false, sign_of};

/// Reads the factor that a function applies to; false after an error.
bool read_operand(Machine& m, const char* section, double& x) {
    m.value.kind = VALUE_NONE;
    x = eval_factor(m);
    if (m.error_code != ERROR_NONE)
        return false;
    if (m.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, {section, 0});
    else if (m.value.kind == VALUE_STRVAR || m.value.kind == VALUE_STRING)
        raise_error(m, ERROR_SYNTAX, {section, 1});
    return m.error_code == ERROR_NONE;
}

double number_result(Machine& m, double result) {
    m.value.kind = VALUE_NUMBER;
    m.value.number = result;
    return result;
}

double apply(Machine& m, const PrefixFunction& function) {
    double x = 0;
    if (!read_operand(m, function.section, x))
        return 0;
    return number_result(m, function.formula(function.rounds_argument ? round6(x) : x));
}

} // namespace

double int_function(Machine& m) { return apply(m, INT_); }
double abs_function(Machine& m) { return apply(m, ABS_); }
double sgn_function(Machine& m) { return apply(m, SGN_); }

} // namespace quillon
