// The order in which a simulator starts and ends. Windows and the timer are the caller's: what it makes of them comes
// after the start, and is gone before the end.
#pragma once

#include <string>

namespace quillon {

struct Simulator;

/// Reads the state of the last run from the files in `s.files` (none where their paths are empty), loads the listing
/// that was current, puts the default skin in place, and enters command mode or opens the soft keyboard where the
/// settings say so. What was wrong is told in message boxes, so the host and the catalogue must be in place. False when
/// there is no skin at all: then nothing is to be ticked.
bool start_simulator(Simulator& s);

/// Closes the soft keyboard, ends the tone, and writes settings, variables and the listings loaded last.
void shut_down_simulator(Simulator& s);

/// Puts settings where they count: into the record and the simulator.
void use_settings(Simulator& s, const struct LoadedSettings& loaded);

} // namespace quillon
