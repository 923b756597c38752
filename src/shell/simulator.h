// SPDX-License-Identifier: MIT
// The simulator: the machine and what belongs to it outside of the machine itself. The one place that composes them.
#pragma once

#include "core/machine.h"
#include "display/lcd.h"
#include "shell/disk.h"
#include "shell/key_queue.h"
#include "shell/recent_listings.h"
#include "shell/settings.h"
#include "shell/window.h"

#include <optional>
#include <string>

namespace quillon {

/// Everything of one simulated machine. Large, and its host refers to it: keep it on the heap.
struct Simulator {
    Simulator();
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    Surroundings around;
    Disk disk; ///< where listings and skins are read
    Machine machine;
    LcdPicture lcd;
    Preferences preferences;       ///< settings that are not the machine's
    RecentListings recent;         ///< the listings that were loaded last
    bool listing_was_read = false; ///< that of `preferences.last_file` was read, faulty or not: the title names it
    std::optional<std::string>
        kept_last_file;       ///< what the next start opens, while the one named at this start is unread
    bool reads_pipes = false; ///< listings may come through pipes; nobody at a window can wait for one
    std::string skin_name;    ///< the skin in place, empty for the default
    Window window;
    KeyQueue keys;
    Modifiers modifiers;   ///< the PC's modifier keys now, sampled before each tick
    bool exe_held = false; ///< EXE is down in each tick, and lets everything through that waits for it
};

/// One tick without a look at it: the next key event, modifiers sampled, the machine's tick.
void advance_simulator(Simulator& s);

/// One tick as the timer makes it, with the LCD drawn. Returns whether its picture has changed.
bool simulator_tick(Simulator& s);

} // namespace quillon
