// SPDX-License-Identifier: MIT
// Between the configuration dialog and the running values.
#include "shell/configuration.h"

#include "shell/commands.h"
#include "shell/simulator.h"

#include <algorithm>

namespace quillon {
namespace {

/// The numbers of section DLG_CONFIG.
enum ConfigurationMessage : int {
    MESSAGE_INTERVAL = 20,
    MESSAGE_SET_F = 21,
    MESSAGE_SET_E = 22,
    MESSAGE_SET_G = 23,
    MESSAGE_VOLUME = 24,
};

/// A field with its range and what stands in place of a value outside of it.
struct FieldRule {
    int low;
    int high;
    int fallback;
    int message;
};

constexpr FieldRule SET_F_RULE{-1, 9, -1, MESSAGE_SET_F};
constexpr FieldRule SET_E_RULE{-1, 8, -1, MESSAGE_SET_E};
constexpr FieldRule SET_G_RULE{0, 18, 9, MESSAGE_SET_G};
constexpr FieldRule VOLUME_RULE{0, 10, 10, MESSAGE_VOLUME};
constexpr FieldRule INTERVAL_RULE{TIMER_PERIOD_MIN, TIMER_PERIOD_MAX, 30, MESSAGE_INTERVAL};
constexpr int INTERVAL_MIN = 5;

int checked(int value, const FieldRule& rule, std::vector<int>& messages) {
    if (value >= rule.low && value <= rule.high)
        return value;
    messages.push_back(rule.message);
    return rule.fallback;
}

} // namespace

Configuration begin_configuration(Simulator& s) {
    Machine& m = s.machine;
    if (m.speed.overdrive)
        m.settings.timer_interval = m.speed.saved_timer_interval;
    return {.editor = s.preferences.editor,
            .run_page = m.settings.run_page,
            .timer_interval = m.settings.timer_interval,
            .start_mode = s.preferences.start_mode,
            .ascii_mode = m.settings.ascii_mode ? 1 : 0,
            .set_e_digits = m.settings.set_e_digits,
            .set_f_digits = m.settings.set_f_digits,
            .set_g_digits = m.settings.set_g_digits,
            .pcm_beep = m.settings.pcm_beep ? 1 : 0,
            .beep_volume = m.settings.beep_volume};
}

std::vector<int> accept_configuration(Simulator& s, const Configuration& fields) {
    Machine& m = s.machine;
    std::vector<int> messages;
    m.settings.run_page = std::clamp(fields.run_page, 0, AREA_COUNT - 1);
    const int interval = checked(std::max(fields.timer_interval, INTERVAL_MIN), INTERVAL_RULE, messages);
    m.settings.cursor_interval = cursor_interval_for(interval);
    m.settings.timer_interval = m.speed.overdrive ? OVERDRIVE_INTERVAL_MS : interval;
    if (m.speed.overdrive)
        m.speed.saved_timer_interval = interval;
    m.settings.ascii_mode = fields.ascii_mode != 0;
    s.preferences.editor = fields.editor;
    m.settings.set_f_digits = checked(fields.set_f_digits, SET_F_RULE, messages);
    m.settings.set_e_digits = checked(fields.set_e_digits, SET_E_RULE, messages);
    m.settings.set_g_digits = checked(fields.set_g_digits, SET_G_RULE, messages);
    m.settings.pcm_beep = fields.pcm_beep != 0;
    s.preferences.start_mode = fields.start_mode;
    m.settings.beep_volume = checked(fields.beep_volume, VOLUME_RULE, messages);
    return messages;
}

void cancel_configuration(Simulator& s) {
    if (s.machine.speed.overdrive)
        s.machine.settings.timer_interval = OVERDRIVE_INTERVAL_MS;
}

} // namespace quillon
