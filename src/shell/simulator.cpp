// Composing and ticking a simulator.
#include "shell/simulator.h"

#include "core/display_line.h"
#include "driver/language.h"
#include "driver/tick.h"

namespace quillon {

Simulator::Simulator() { machine.language = &basic_language(); }

void simulator_tick(Simulator& s) {
    Machine& m = s.machine;
    m.ctrl_flag = s.ctrl_down || m.soft_ctrl_latch != 0 ? 1 : 0;
    m.shift_flag = s.shift_down || m.soft_shift_latch != 0 ? 1 : 0;
    m.alt_flag = s.alt_down || m.soft_alt_latch != 0 ? 1 : 0;
    machine_tick(m);
    m.display_offset = first_visible_column(m);
}

} // namespace quillon
