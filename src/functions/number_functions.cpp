// SPDX-License-Identifier: MIT
// Results of the numeric functions with argument lists, and the random generator.
#include "functions/number_functions.h"

#include "core/machine.h"
#include "core/numbers.h"
#include "functions/formulas.h"
#include "functions/results.h"

#include <cmath>

namespace quillon {
namespace {

constexpr std::size_t CELL_X = 23;
constexpr std::size_t CELL_Y = 24;

/// Stores the two results of REC and POL, which leave no operand. The cells' text and flag stay as they are.
void store_coordinates(Machine& m, double x, double y) {
    m.variables[CELL_X].kind = CELL_NUMBER;
    m.variables[CELL_X].number = x;
    m.variables[CELL_Y].kind = CELL_NUMBER;
    m.variables[CELL_Y].number = y;
    m.eval.value.kind = VALUE_NONE;
    m.eval.value.number = 0;
}

} // namespace

double rnd_result(Machine& m, const Arguments& arguments) {
    const auto [x, n, unused] = arguments.number;
    const double k = n + 1;
    double scaled = std::pow(10.0, -k) * x;
    if (compare_numbers(fraction(scaled), 0.5) >= 0)
        scaled += 1;
    return number_result(m, std::floor(scaled) * std::pow(10.0, k));
}

double npr_result(Machine& m, const Arguments& arguments) {
    const auto [n, r, unused] = arguments.number;
    return number_result(m, factorial(n) / factorial(n - r));
}

double ncr_result(Machine& m, const Arguments& arguments) {
    const auto [n, r, unused] = arguments.number;
    return number_result(m, factorial(n) / (factorial(n - r) * factorial(r)));
}

/// The number is x all the same, for whoever takes it without looking at the operand.
double rec_result(Machine& m, const Arguments& arguments) {
    const auto [radius, angle, unused] = arguments.number;
    const double radians = to_radians(m, angle);
    const double x = radius * std::cos(radians);
    store_coordinates(m, x, radius * std::sin(radians));
    return x;
}

double pol_result(Machine& m, const Arguments& arguments) {
    const auto [x, y, unused] = arguments.number;
    // The quotient folds the left half-plane onto the right one.
    const double angle = x == 0 && y == 0 ? 0 : std::atan(y / x);
    store_coordinates(m, std::sqrt(x * x + y * y), from_radians(m, angle));
    return 0;
}

double deg_result(Machine& m, const Arguments& arguments) {
    const auto [degrees, minutes, seconds] = arguments.number;
    return number_result(m, degrees + minutes / 60 + seconds / 3600);
}

int next_random(std::uint32_t& seed) {
    seed = seed * 214013 + 2531011;
    return static_cast<int>(seed >> 16 & 32767);
}

double ran_result(Machine& m, const Arguments&) {
    constexpr double OUTPUT_MAX = 32767;
    return number_result(m, next_random(m.random_seed) / OUTPUT_MAX);
}

} // namespace quillon
