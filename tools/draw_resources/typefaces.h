// SPDX-License-Identifier: MIT
// The two typefaces of the artwork that are not the LCD's font.
#pragma once

#include "draw_resources/pen.h"

namespace quillon {

/// Bold capitals, ten pixels high, for the LCD's indicators; only the letters they need.
const Typeface& indicator_typeface();

/// Narrow capitals and digits, five pixels high and mostly three wide, for the legends of keys.
const Typeface& legend_typeface();

} // namespace quillon
