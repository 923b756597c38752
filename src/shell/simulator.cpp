// Composing and ticking a simulator.
#include "shell/simulator.h"

#include "driver/language.h"
#include "driver/tick.h"
#include "shell/commands.h"
#include "shell/skins.h"

namespace quillon {
namespace {

void sample_modifiers(Machine& m, const Modifiers& down) {
    m.ctrl_flag = down.ctrl || m.soft_ctrl_latch != 0 ? 1 : 0;
    m.shift_flag = down.shift || m.soft_shift_latch != 0 ? 1 : 0;
    m.alt_flag = down.alt || m.soft_alt_latch != 0 ? 1 : 0;
}

} // namespace

Simulator::Simulator() {
    machine.language = &basic_language();
    machine.host.run_command = [this](int command) { run_host_command(*this, command); };
    machine.host.is_key_down = [this](int key) { return is_key_down(keys, key); };
    machine.host.load_skin = [this](std::string_view name) { return load_skin(*this, name); };
}

bool simulator_tick(Simulator& s) {
    Machine& m = s.machine;
    const std::optional<KeyEvent> key = next_key_down(s.keys, m);
    sample_modifiers(m, key ? key->modifiers : s.modifiers);
    if (key)
        apply_key_down(s.keys, m, *key);
    note_pending_key(s.keys, m);
    machine_tick(m);
    return render_lcd(s.lcd, m);
}

} // namespace quillon
