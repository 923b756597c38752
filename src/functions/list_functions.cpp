// SPDX-License-Identifier: MIT
// Numeric functions with argument lists, and the random generator.
#include "functions/list_functions.h"

#include "core/interpreter.h"
#include "core/numbers.h"
#include "functions/arguments.h"
#include "functions/formulas.h"
#include "functions/signatures.h"

#include <cmath>

namespace quillon {
namespace {

constexpr int ACCEPTED = ArgumentErrors::ACCEPTED;
constexpr std::size_t CELL_X = 23;
constexpr std::size_t CELL_Y = 24;

/// Reads "(", a number, ",", another number; message 0 of the section is for the "(", 3 for the ",".
bool read_pair(Machine& m, const char* section, const ArgumentErrors& second_errors, double& first, double& second) {
    return open_arguments(m, {section, 0}) && read_number(m, {section, ACCEPTED, 1, 2}, first) &&
           require_comma(m, {section, 3}) && read_number(m, second_errors, second);
}

/// Reads n and r of NPR and NCR, made whole; false after an error.
bool read_counts(Machine& m, const char* section, double& n, double& r) {
    if (!read_pair(m, section, {section, ACCEPTED, 1, 2}, n, r))
        return false;
    n = std::floor(round6(n));
    r = std::floor(round6(r));
    if (!are_counts(n, r))
        raise_error(m, ERROR_VARIABLE, {section, 4});
    return !failed(m);
}

/// Stores the two results of REC and POL. The cells' text and flag stay as they are.
void store_coordinates(Machine& m, double x, double y) {
    m.variables[CELL_X].kind = CELL_NUMBER;
    m.variables[CELL_X].number = x;
    m.variables[CELL_Y].kind = CELL_NUMBER;
    m.variables[CELL_Y].number = y;
    m.eval.value.kind = VALUE_NONE;
    m.eval.value.number = 0;
    pass_closing(m);
}

/// One part of DEG, a whole number below 60; false after an error.
bool read_sexagesimal_part(Machine& m, int missing, int& part) {
    constexpr const char* SECTION = "DEG";
    double x = 0;
    if (!read_number(m, {SECTION, missing, 2, 3}, x))
        return false;
    part = truncate_to_int(round6(x));
    if (!is_sexagesimal_part(x))
        raise_error(m, ERROR_VARIABLE, {SECTION, 4});
    return !failed(m);
}

} // namespace

bool are_counts(double n, double r) { return r >= 0 && n >= r; }

bool is_sexagesimal_part(double x) {
    constexpr int LIMIT = 60;
    return truncate_to_int(round6(x)) < LIMIT;
}

double rnd_function(Machine& m) {
    double x = 0;
    double n = 0;
    if (!read_pair(m, "RND", {"RND", ACCEPTED, 4, 5}, x, n))
        return 0;
    const double k = n + 1;
    double scaled = std::pow(10.0, -k) * x;
    if (compare_numbers(fraction(scaled), 0.5) >= 0)
        scaled += 1;
    const double result = number_result(m, std::floor(scaled) * std::pow(10.0, k));
    return close_arguments(m, {"RND", 6}) ? result : 0;
}

double npr_function(Machine& m) {
    double n = 0;
    double r = 0;
    if (!read_counts(m, "NPR", n, r))
        return 0;
    const double result = number_result(m, factorial(n) / factorial(n - r));
    pass_closing(m);
    return result;
}

double ncr_function(Machine& m) {
    double n = 0;
    double r = 0;
    if (!read_counts(m, "NCR", n, r))
        return 0;
    const double result = number_result(m, factorial(n) / (factorial(n - r) * factorial(r)));
    pass_closing(m);
    return result;
}

double rec_function(Machine& m) {
    double radius = 0;
    double angle = 0;
    if (!read_pair(m, "REC", {"REC", ACCEPTED, 1, 2}, radius, angle))
        return 0;
    const double radians = to_radians(m, angle);
    const double x = radius * std::cos(radians);
    store_coordinates(m, x, radius * std::sin(radians));
    return x;
}

double pol_function(Machine& m) {
    double x = 0;
    double y = 0;
    if (!read_pair(m, "POL", {"POL", ACCEPTED, 1, 2}, x, y))
        return 0;
    // The quotient folds the left half-plane onto the right one.
    const double angle = x == 0 && y == 0 ? 0 : std::atan(y / x);
    store_coordinates(m, std::sqrt(x * x + y * y), from_radians(m, angle));
    return 0;
}

double deg_function(Machine& m) {
    int part = 0;
    if (!open_arguments(m, {"DEG", 0}) || !read_sexagesimal_part(m, 1, part))
        return 0;
    double result = part;
    for (int unit = 60; unit <= 3600 && m.eval.token == TOKEN_COMMA; unit *= 60) {
        if (!read_sexagesimal_part(m, ACCEPTED, part))
            return 0;
        result += part / static_cast<double>(unit);
    }
    number_result(m, result);
    next_token_after_operand(m);
    return result;
}

int next_random(std::uint32_t& seed) {
    seed = seed * 214013 + 2531011;
    return static_cast<int>(seed >> 16 & 32767);
}

double ran_function(Machine& m) {
    constexpr double OUTPUT_MAX = 32767;
    const double result = number_result(m, next_random(m.random_seed) / OUTPUT_MAX);
    next_token_after_operand(m);
    return result;
}

} // namespace quillon
