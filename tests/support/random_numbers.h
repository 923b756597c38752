// SPDX-License-Identifier: MIT
// Random numbers of all magnitudes, many of them near the places where rounding decides.
#pragma once

#include "core/numbers.h"

#include <cmath>
#include <random>

namespace quillon::testing {

/// The same numbers on every run.
class RandomNumbers {
public:
    double any() {
        const double x = number_of_bits(engine_());
        return std::isfinite(x) ? x : 1.5;
    }
    /// Up to 10^`magnitude`, with that many decimals, and sometimes the neighbour.
    double decimal(int magnitude, int decimals) {
        const double scale = std::pow(10.0, decimals);
        const double x = std::floor(std::pow(10.0, magnitude) * fraction() * scale) / scale;
        const int choice = below(8);
        const double near = choice < 2 ? std::nextafter(x, choice == 0 ? 0 : 1e308) : x;
        return choice % 2 == 0 ? near : -near;
    }
    int below(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }

private:
    std::mt19937_64 engine_{20240229};

    double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
};

} // namespace quillon::testing
