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
    if (m.overdrive != 0)
        m.timer_interval = m.saved_timer_interval;
    return {.editor = s.settings.editor,
            .run_page = m.run_page,
            .timer_interval = m.timer_interval,
            .start_mode = s.settings.start_mode,
            .ascii_mode = m.ascii_mode,
            .set_e_digits = m.set_e_digits,
            .set_f_digits = m.set_f_digits,
            .set_g_digits = m.set_g_digits,
            .pcm_beep = m.pcm_beep,
            .beep_volume = m.beep_volume};
}

std::vector<int> accept_configuration(Simulator& s, const Configuration& fields) {
    Machine& m = s.machine;
    std::vector<int> messages;
    m.run_page = std::clamp(fields.run_page, 0, AREA_COUNT - 1);
    const int interval = checked(std::max(fields.timer_interval, INTERVAL_MIN), INTERVAL_RULE, messages);
    m.cursor_interval = cursor_interval_for(interval);
    m.timer_interval = m.overdrive != 0 ? OVERDRIVE_INTERVAL_MS : interval;
    if (m.overdrive != 0)
        m.saved_timer_interval = interval;
    m.ascii_mode = fields.ascii_mode;
    s.settings.editor = fields.editor;
    m.set_f_digits = checked(fields.set_f_digits, SET_F_RULE, messages);
    m.set_e_digits = checked(fields.set_e_digits, SET_E_RULE, messages);
    m.set_g_digits = checked(fields.set_g_digits, SET_G_RULE, messages);
    m.pcm_beep = fields.pcm_beep;
    s.settings.start_mode = fields.start_mode;
    m.beep_volume = checked(fields.beep_volume, VOLUME_RULE, messages);
    return messages;
}

void cancel_configuration(Simulator& s) {
    if (s.machine.overdrive != 0)
        s.machine.timer_interval = OVERDRIVE_INTERVAL_MS;
}

} // namespace quillon
