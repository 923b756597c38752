// SPDX-License-Identifier: MIT
// The files that carry a simulator's state from one session to the next: settings, variables, recent listings. They are
// read at the start and saved while the program runs, so that a kill loses little. What cannot be read is never
// replaced, and what another instance has saved meanwhile is merged or kept beside.
#pragma once

#include "files/places.h"
#include "shell/recent_listings.h"
#include "shell/settings.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quillon {

struct Simulator;

/// The files, and what they held when they were read or saved last. Times are milliseconds since any moment.
struct StateFiles {
    DataFiles paths; ///< empty for nowhere

    bool settings_unread = false; ///< there, but not read: not to be replaced
    bool values_unread = false;
    bool recent_unread = false;
    StoredSettings settings; ///< ours, as of the last save
    std::string values;      ///< bytes of the variables' file
    std::string our_values;  ///< and those of our variables
    RecentListings recent;
    std::string listing; ///< the current one

    bool trouble_noted = false; ///< what could not be saved has been said, and nothing was saved since
    std::int64_t looked_at = 0; ///< when it was looked last whether there is something to save
};

/// Reads the files (none where their paths are empty) and removes what killed sessions have left behind. What could not
/// be read or understood is said in message boxes, so the host and the catalogue must be in place. Called before
/// `start_simulator`.
void read_state(Simulator& s, StateFiles& state);

/// Saves what has changed. Returns the paths that could not be written.
std::vector<std::string> save_state(Simulator& s, StateFiles& state);

/// Saves what has changed: at once when the listing is another one, else every 5 seconds, and while a program runs
/// every 60. To be called after each tick. That it failed is noted once.
void save_when_due(Simulator& s, StateFiles& state, std::int64_t now);

/// A time for `save_when_due`.
std::int64_t steady_milliseconds();

/// What to say of paths that could not be written.
std::string unsaved_text(const Simulator& s, const std::vector<std::string>& paths);

} // namespace quillon
