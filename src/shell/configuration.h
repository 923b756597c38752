// SPDX-License-Identifier: MIT
// What the configuration dialog shows and takes over: the rules of the dialog without the dialog. Which settings have a
// field in it, and what they accept, is said by their rows (setting_rows).
#pragma once

#include "shell/settings.h"

#include <vector>

namespace quillon {

struct Simulator;

/// The values that the dialog opens with. Meanwhile Overdrive runs at the configured speed.
StoredSettings begin_configuration(Simulator& s);

/// Takes over those of `typed` that have a field in the dialog, in range or not. In place of one that is out of range
/// stands the default, or the nearer end for the program area and below 5 ms for the interval; returns the numbers of
/// the messages of section DLG_CONFIG about them.
std::vector<int> accept_configuration(Simulator& s, StoredSettings typed);

/// Ends the dialog without taking anything over.
void cancel_configuration(Simulator& s);

} // namespace quillon
