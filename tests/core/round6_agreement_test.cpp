// SPDX-License-Identifier: MIT
// The quick ways with numbers give, bit by bit, what the slow ones give: rounding to six decimals, and the digits of a
// number. Two million numbers: this stands in the program without sanitizers.
#include "core/numbers.h"

#include "tests/support/random_numbers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iomanip>
#include <tuple>

namespace quillon::testing {
namespace {

/// One number of each sort: of any size, huge and whole, ties of the sixth decimal (in binary, and on the 17 digits),
/// and with a few decimals.
double sample(RandomNumbers& numbers, int i) {
    switch (i % 8) {
    case 0: return numbers.any();
    case 1: return numbers.decimal(22, 0);
    case 2: return (2 * numbers.below(1 << 24) + 1) / 128.0;
    case 3: return (numbers.below(1 << 24) + 0.5) / 1e6;
    default: return numbers.decimal(i % 17 - 5, 5 + i % 5);
    }
}

TEST(Numbers, QuickWaysAgreeWithSlowOnes) {
    RandomNumbers numbers;
    for (int i = 0; i < 2000000; ++i) {
        const double x = sample(numbers, i);
        const Decimal quick = to_decimal(x);
        const Decimal slow = to_decimal_by_text(x);
        const bool same_digits = std::tie(quick.negative, quick.digits, quick.exponent) ==
                                 std::tie(slow.negative, slow.digits, slow.exponent);
        if (!same_digits || bits_of(round6(x)) != bits_of(round6_by_digits(x)))
            FAIL() << std::setprecision(20) << x;
    }
}

#if defined(__x86_64__)
// A processor that multiplies and adds in one step would round once only: such numbers differ from machine to machine.
__attribute__((target("fma"), noinline)) double product_plus(double a, double b, double c) { return a * b + c; }

TEST(Numbers, MultiplyingAndAddingRoundsTwice) {
    if (!__builtin_cpu_supports("fma"))
        GTEST_SKIP() << "this processor has no such step";
    const volatile double x = 1 + 0x1p-30; // not known to the compiler
    EXPECT_EQ(product_plus(x, x, -1 - 0x1p-29), 0);
}
#endif

} // namespace
} // namespace quillon::testing
