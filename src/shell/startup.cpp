// SPDX-License-Identifier: MIT
// Starting and ending.
#include "shell/startup.h"

#include "core/controls.h"
#include "shell/commands.h"
#include "shell/simulator.h"
#include "shell/skins.h"

#include <utility>

namespace quillon {
namespace {

void load_first_listing(Simulator& s, const std::string& named) {
    name_first_listing(s, named);
    if (!s.preferences.last_file.empty())
        load_listing_file(s, std::string(s.preferences.last_file));
}

} // namespace

void name_first_listing(Simulator& s, const std::string& named) {
    if (!named.empty())
        s.kept_last_file = std::exchange(s.preferences.last_file, s.disk.absolute_path(named));
}

void use_settings(Simulator& s, const LoadedSettings& loaded) {
    constexpr const char* SECTION = "INI";
    s.preferences = loaded.settings.preferences;
    apply_settings(s.machine, loaded.settings.machine);
    for (const int number : loaded.messages)
        s.machine.around->host.show_message(lookup_message(s.machine.around->catalogue, SECTION, number),
                                            MessageIcon::WARNING);
}

bool start_simulator(Simulator& s, const std::string& listing) {
    load_first_listing(s, listing);
    if (!load_skin(s, {}))
        return false;
    if (s.preferences.start_mode == 1)
        begin_command_mode(s.machine);
    if (s.preferences.soft_keyboard == 1) {
        open_soft_keyboard(s.machine);
        s.window.toggle_soft_keyboard();
    }
    render_lcd(s.lcd, s.machine);
    return true;
}

void shut_down_simulator(Simulator& s) {
    close_soft_keyboard(s.machine);
    if (s.machine.sound.tone.samples > 0)
        s.machine.around->host.stop_tone();
}

} // namespace quillon
