// SPDX-License-Identifier: MIT
// The LCD for those who do not look at it: its text and its lit indicators, as Unicode.
#pragma once

#include <string>

namespace quillon {

struct Simulator;

/// The twelve visible characters as UTF-8. What only blinks stands still: the cursor of an entry is left out, the
/// selected program area always shown.
std::string lcd_text(const Simulator& s);

/// The names of the lit indicators, with blanks between them.
std::string lcd_indicator_text(const Simulator& s);

} // namespace quillon
