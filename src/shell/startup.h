// SPDX-License-Identifier: MIT
// The order in which a simulator starts and ends. Windows and the timer are the caller's: what it makes of them comes
// after the start, and is gone before the end.
#pragma once

#include <string>

namespace quillon {

struct Simulator;

/// Makes the listing that is named the one to be loaded; without a name it is that of the last run. One that cannot be
/// read stays the one to be loaded again: it may be back, or be there at last.
void name_first_listing(Simulator& s, const std::string& named);

/// Starts with the state of the last run, which has been read already where there is one: loads the listing that is
/// named, or without one that of the last run, puts the default skin in place, and enters command mode or opens the
/// soft keyboard where the settings say so. Message boxes say what was wrong, so the host and the catalogue must be in
/// place. False when there is no skin at all: then nothing is to be ticked.
bool start_simulator(Simulator& s, const std::string& listing = "");

/// Closes the soft keyboard and ends the tone. The state is to be saved afterwards.
void shut_down_simulator(Simulator& s);

/// Puts settings where they count: into the record and the simulator.
void use_settings(Simulator& s, const struct LoadedSettings& loaded);

} // namespace quillon
