// SPDX-License-Identifier: MIT
// What a host tells the machine about modes, tones and the pending key. The rest of core/controls.h is where its
// subject is.
#include "core/controls.h"

#include "core/machine.h"

namespace quillon {

void set_tracing(Machine& m, bool on) {
    m.trace.trace_mode = on;
    m.trace.trace_step_flag = true;
    m.trace.trace_step_request = false;
}

void take_step(Machine& m) { m.trace.trace_step_request = m.trace.trace_step_request || m.trace.trace_mode; }

void set_overdrive(Machine& m, bool on) {
    if (on == m.speed.overdrive)
        return;
    if (on) {
        m.speed.saved_timer_interval = m.settings.timer_interval;
        m.settings.timer_interval = OVERDRIVE_INTERVAL_MS;
    } else {
        m.settings.timer_interval = m.speed.saved_timer_interval;
    }
    m.speed.overdrive = on;
}

void stop_tone(Machine& m) {
    if (m.sound.tone.samples == 0)
        return;
    m.sound.sound_ticks_left = 0;
    m.sound.sound_holds_run = false;
    m.around->host.stop_tone();
}

void press_exe(Machine& m) { m.keys.enter_request = true; }

void set_pending_key(Machine& m, std::string_view text, int held_key) {
    m.keys.key_string = text;
    m.keys.held_key = held_key;
}

void clear_key(Machine& m) { set_pending_key(m, {}); }

void forget_last_key(Machine& m) { m.entry.prev_key_string.clear(); }

} // namespace quillon
