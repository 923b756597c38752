// SPDX-License-Identifier: MIT
// How arguments become the numbers that a word works on.
#include "core/signature.h"

#include "core/numbers.h"

#include <cmath>

namespace quillon {
namespace {

double low_32_bits(double x) {
    constexpr double LIMIT = 9223372036854775808.0; // 2^63
    if (!(std::fabs(x) < LIMIT))
        return 0;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(x)));
}

} // namespace

double converted(Conversion conversion, double x) {
    switch (conversion) {
    case Conversion::SIX_DECIMALS: return round6(x);
    case Conversion::FLOOR: return std::floor(round6(x));
    case Conversion::WHOLE: return truncate_to_int(round6(x));
    case Conversion::LOW_32_BITS: return low_32_bits(x);
    default: return x;
    }
}

} // namespace quillon
