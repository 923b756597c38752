// SPDX-License-Identifier: MIT
// The machine's language: every word with the operation that carries it out.
#pragma once

#include "core/language.h"

namespace quillon {

/// The one language there is; a machine points to it.
const Language& basic_language();

} // namespace quillon
