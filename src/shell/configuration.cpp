// SPDX-License-Identifier: MIT
// Between the configuration dialog and the running values.
#include "shell/configuration.h"

#include "core/controls.h"
#include "shell/simulator.h"

#include <algorithm>

namespace quillon {
namespace {

/// What is taken over of a number that was typed.
int taken_number(const NumberSetting& setting, const DialogField& field, int typed, std::vector<int>& messages) {
    if (field.message == NO_MESSAGE)
        return std::clamp(typed, field.first, field.last);
    return accepted_number(setting, typed, field.message, messages);
}

/// While the dialog is open the machine ticks at the configured speed; then Overdrive goes on.
void end_pause_of_overdrive(Machine& m) {
    if (m.speed.overdrive)
        m.settings.timer_interval = OVERDRIVE_INTERVAL_MS;
}

} // namespace

StoredSettings begin_configuration(Simulator& s) {
    Machine& m = s.machine;
    if (m.speed.overdrive)
        m.settings.timer_interval = m.speed.saved_timer_interval;
    return collect_settings(m, s.preferences);
}

std::vector<int> accept_configuration(Simulator& s, StoredSettings typed) {
    int& interval = typed.machine.timer_interval;
    interval = std::max(interval, find_setting("TIMER")->dialog->first);  // shorter ones are for Overdrive
    StoredSettings settings = collect_settings(s.machine, s.preferences); // the machine has run on meanwhile
    std::vector<int> messages;
    for (const SettingRow& row : setting_rows()) {
        if (!row.dialog)
            continue;
        if (const auto* number = std::get_if<NumberSetting>(&row.field))
            number->set(settings, taken_number(*number, *row.dialog, number->get(typed), messages));
        if (const auto* text = std::get_if<TextSetting>(&row.field))
            settings.preferences.*text->field = typed.preferences.*text->field;
    }
    settings.machine.cursor_interval = cursor_interval_for(settings.machine.timer_interval);
    s.preferences = settings.preferences;
    apply_settings(s.machine, settings.machine);
    end_pause_of_overdrive(s.machine);
    std::sort(messages.begin(), messages.end()); // numbered in the order in which they are shown
    return messages;
}

void cancel_configuration(Simulator& s) { end_pause_of_overdrive(s.machine); }

} // namespace quillon
