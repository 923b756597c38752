// The simulator: the machine and what belongs to it outside of the machine itself. The one place that composes them.
#pragma once

#include "core/machine.h"

namespace quillon {

/// Everything of one simulated machine.
struct Simulator {
    Simulator();

    Machine machine;

    // The PC's modifier keys, as whoever has the keyboard sees them now; sampled before each tick.
    bool shift_down = false;
    bool ctrl_down = false;
    bool alt_down = false;
};

/// One tick as the timer makes it: modifiers sampled, the machine's tick, the display's visible part worked out.
void simulator_tick(Simulator& s);

} // namespace quillon
