// SPDX-License-Identifier: MIT
// Formulas of the numeric functions.
#include "functions/formulas.h"

#include <cmath>

namespace quillon {

double area_sine(double x) { return std::log(std::sqrt(x * x + 1) + x); }

double area_cosine(double x) { return std::log(std::sqrt(x * x - 1) + x); }

double area_tangent(double x) { return std::log((1 + x) / (1 - x)) / 2; }

double fraction(double x) { return x - std::floor(x); }

double sign(double x) { return x > 0 ? 1 : (x < 0 ? -1 : 0); }

double factorial(double x) {
    double product = 1;
    double factor = std::floor(x);
    while (factor > 0 && std::isfinite(product))
        product *= factor--;
    return product;
}

double cube_root(double x) {
    if (x == 0)
        return 0;
    const double magnitude = std::fabs(x);
    int exponent = 0;
    const double m = std::frexp(magnitude, &exponent);
    double y =
        (((-0.13466110473359522 * m + 0.5466460136639553) * m - 0.9543822477150945) * m + 1.1399983354717294) * m +
        0.4023897956454475;
    // The cube root of 2^rest, for the part of the exponent that three does not divide.
    constexpr double CUBE_ROOT_OF_POWER[] = {1, 1.2599210498948732, 1.5874010519681996};
    const int third = std::abs(exponent) / 3;
    const double rest = CUBE_ROOT_OF_POWER[std::abs(exponent) % 3];
    y = exponent >= 0 ? std::ldexp(y * rest, third) : std::ldexp(y / rest, -third);
    constexpr double ABOUT_A_THIRD = 0.333333333333; // the machine's constant, not 1/3
    y -= (y - magnitude / (y * y)) * ABOUT_A_THIRD;
    constexpr double NINE_DECIMALS = 1e9;
    return std::trunc(std::copysign(y, x) * NINE_DECIMALS) / NINE_DECIMALS;
}

double itself(double x) { return x; }

} // namespace quillon
