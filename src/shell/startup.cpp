// Starting and ending.
#include "shell/startup.h"

#include "keys/soft_keyboard.h"
#include "shell/commands.h"
#include "shell/paths.h"
#include "shell/saved_values.h"
#include "shell/simulator.h"
#include "shell/skins.h"
#include "statements/command_line.h"

#include <utility>

namespace quillon {
namespace {

void read_state(Simulator& s) {
    if (!s.files.settings.empty())
        use_settings(s, read_settings(s.files.settings));
    if (!s.files.saved_values.empty())
        read_saved_values(s.files.saved_values, s.machine);
    if (!s.files.recent_listings.empty())
        s.recent = read_recent_listings(s.files.recent_listings);
}

/// The listing that was named, or that of the last run. One that cannot be read stays the one to be loaded again: it
/// may be back, or be there at last.
void load_first_listing(Simulator& s, const std::string& named) {
    if (!named.empty())
        s.kept_last_file = std::exchange(s.settings.last_file, absolute_path(named));
    if (!s.settings.last_file.empty())
        load_listing_file(s, std::string(s.settings.last_file));
}

} // namespace

void use_settings(Simulator& s, const LoadedSettings& loaded) {
    constexpr const char* SECTION = "INI";
    s.settings = loaded.settings;
    apply_settings(s.machine, s.settings);
    for (const int number : loaded.messages)
        s.machine.host.show_message(lookup_message(s.machine.catalogue, SECTION, number), MessageIcon::WARNING);
}

bool start_simulator(Simulator& s, const std::string& listing) {
    read_state(s);
    load_first_listing(s, listing);
    if (!load_skin(s, {}))
        return false;
    if (s.settings.start_mode == 1)
        begin_command_mode(s.machine);
    if (s.settings.soft_keyboard == 1) {
        open_soft_keyboard(s.machine);
        s.window.toggle_soft_keyboard();
    }
    render_lcd(s.lcd, s.machine);
    return true;
}

std::vector<std::string> save_state(Simulator& s) {
    if (s.files.settings.empty())
        return {};
    create_folder(s.files.folder);
    collect_settings(s.machine, s.settings);
    Settings settings = s.settings;
    settings.last_file = s.kept_last_file.value_or(settings.last_file);
    std::vector<std::string> unsaved;
    if (!write_settings(s.files.settings, settings))
        unsaved.push_back(s.files.settings);
    if (!write_saved_values(s.files.saved_values, s.machine))
        unsaved.push_back(s.files.saved_values);
    if (!write_recent_listings(s.files.recent_listings, s.recent))
        unsaved.push_back(s.files.recent_listings);
    return unsaved;
}

std::string unsaved_text(const Simulator& s, const std::vector<std::string>& paths) {
    std::string text = lookup_message(s.machine.catalogue, "SAVE", 0);
    for (const std::string& path : paths)
        text += path + "\r\n";
    return text;
}

std::vector<std::string> shut_down_simulator(Simulator& s) {
    close_soft_keyboard(s.machine);
    if (s.machine.tone.samples > 0)
        s.machine.host.stop_tone();
    return save_state(s);
}

} // namespace quillon
