// Two machines compared field by field.
#pragma once

#include "core/machine.h"

#include <string>

namespace quillon::testing {

/// The first field in which the records differ, with both values; empty when there is none. Positions in texts count
/// from the start of the text that they lie in. What the caches hold and what the host is does not count.
std::string record_difference(const Machine& a, const Machine& b);

} // namespace quillon::testing
