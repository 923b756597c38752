// SPDX-License-Identifier: MIT
// The formulas that the C library does not have, or not as the machine computes them.
#pragma once

namespace quillon {

/// Inverse hyperbolic functions by their logarithms. The sine loses its digits far below 0, as on the machine.
double area_sine(double x);
double area_cosine(double x);
double area_tangent(double x);

/// x - floor(x): 0 up to, not including, 1.
double fraction(double x);

/// -1, 0 or 1.
double sign(double x);

/// The factorial of floor(x), 1 below 1; infinite where it passes the range of doubles.
double factorial(double x);

/// The cube root by one step of Newton's method from a polynomial estimate, cut to nine decimals.
double cube_root(double x);

/// The argument itself.
double itself(double x);

} // namespace quillon
