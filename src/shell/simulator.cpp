// SPDX-License-Identifier: MIT
// Composing and ticking a simulator.
#include "shell/simulator.h"

#include "core/controls.h"
#include "driver/language.h"
#include "shell/commands.h"
#include "shell/skins.h"

namespace quillon {
Simulator::Simulator() {
    around.language = &basic_language();
    machine.around.pointer = &around;
    around.host.run_command = [this](int command) { run_host_command(*this, command); };
    around.host.is_key_down = [this](int key) { return is_key_down(keys, key); };
    around.host.load_skin = [this](std::string_view name) { return load_skin(*this, name); };
}

void advance_simulator(Simulator& s) {
    Machine& m = s.machine;
    const std::optional<KeyEvent> key = next_key_down(s.keys, m);
    const Modifiers& down = key ? key->modifiers : s.modifiers;
    sample_modifiers(m, down.shift, down.ctrl, down.alt);
    if (key)
        apply_key_down(s.keys, m, *key);
    note_pending_key(s.keys, m);
    m.keys.enter_request |= s.exe_held;
    machine_tick(m);
}

bool simulator_tick(Simulator& s) {
    advance_simulator(s);
    return render_lcd(s.lcd, s.machine);
}

} // namespace quillon
