// SPDX-License-Identifier: MIT
// Reading, merging and saving the state.
#include "files/state_files.h"

#include "core/errors.h"
#include "files/file_reading.h"
#include "files/safe_write.h"
#include "files/settings_file.h"
#include "files/values_file.h"
#include "shell/saved_values.h"
#include "shell/simulator.h"
#include "shell/startup.h"

#include <algorithm>
#include <chrono>

namespace quillon {
namespace {

constexpr std::size_t RECENT_FILE_MAX = std::size_t{1} << 20;

constexpr MessageId FILE_NOT_READ{"FILES", 0};
constexpr MessageId FILE_NOT_UNDERSTOOD{"FILES", 1};
constexpr MessageId FILE_OF_ANOTHER{"FILES", 2};

std::string file_message(const Simulator& s, MessageId message, const std::string& about) {
    return std::string(lookup_message(s.machine.around->catalogue, message.section, message.number)) + "\r\n" + about;
}

void warn(const Simulator& s, MessageId message, const std::string& about) {
    s.machine.around->host.show_message(file_message(s, message, about), MessageIcon::WARNING);
}

/// Says what is wrong with a file that was read. Returns whether it is there and could not be read.
bool warn_of_file(const Simulator& s, const std::string& path, const FileContents& file, bool is_understood) {
    const bool is_unread = file.status == ReadStatus::UNREADABLE;
    if (is_unread)
        warn(s, FILE_NOT_READ, path + ": " + read_fault_text(file));
    else if (file.status == ReadStatus::TOO_LARGE || !is_understood)
        warn(s, FILE_NOT_UNDERSTOOD, path);
    return is_unread;
}

void read_settings_file(Simulator& s, StateFiles& state) {
    const FileContents file = read_file(state.paths.settings, SETTINGS_FILE_MAX);
    const bool is_whole = file.status == ReadStatus::READ;
    state.settings_unread = warn_of_file(s, state.paths.settings, file, holds_settings(file.bytes));
    use_settings(s, parse_settings(is_whole ? file.bytes : ""));
}

std::string values_bytes(const Machine& m) {
    const ValuesImage image = values_image(m);
    return {reinterpret_cast<const char*>(image.data()), image.size()};
}

void read_variables(Simulator& s, StateFiles& state) {
    FileContents file = read_values_file(state.paths.saved_values);
    const bool is_understood = read_values_image(s.machine, file);
    state.values_unread = warn_of_file(s, state.paths.saved_values, file, is_understood);
    state.values = std::move(file.bytes);
    state.our_values = values_bytes(s.machine);
}

void read_recent(Simulator& s, StateFiles& state) {
    const FileContents file = read_file(state.paths.recent_listings, RECENT_FILE_MAX);
    state.recent_unread = warn_of_file(s, state.paths.recent_listings, file, true);
    s.recent = parse_recent_listings(file.bytes);
}

StoredSettings settings_to_save(const Simulator& s) {
    StoredSettings settings = collect_settings(s.machine, s.preferences);
    settings.preferences.last_file = s.kept_last_file.value_or(settings.preferences.last_file);
    return settings;
}

bool save_settings(const Simulator& s, StateFiles& state) {
    const std::string& path = state.paths.settings;
    if (state.settings_unread)
        return true;
    const StoredSettings ours = settings_to_save(s);
    const FileContents file = read_file(path, SETTINGS_FILE_MAX);
    const bool has_settings = file.status == ReadStatus::READ && !file.bytes.empty() && holds_settings(file.bytes);
    const StoredSettings merged =
        has_settings ? merge_settings(parse_settings(file.bytes).settings, ours, state.settings) : ours;
    if (settings_text(merged) != file.bytes && !write_settings(path, merged))
        return false;
    state.settings = ours;
    return true;
}

/// False when that cannot be.
bool keep_values_of_another(const Simulator& s, const std::string& beside, const std::string& theirs) {
    if (!safe_write(beside, theirs))
        return false;
    s.window.note(file_message(s, FILE_OF_ANOTHER, beside));
    return true;
}

/// Where another instance has saved its variables meanwhile, those that were changed last replace the others, which are
/// kept.
bool save_values(const Simulator& s, StateFiles& state) {
    const std::string& path = state.paths.saved_values;
    const FileContents file = read_values_file(path);
    const std::string ours = values_bytes(s.machine);
    const bool another_has_saved = file.status == ReadStatus::READ && file.bytes != state.values;
    if (state.values_unread || (another_has_saved && ours == state.our_values))
        return true;
    if (another_has_saved && !keep_values_of_another(s, path + ".other", file.bytes))
        return false;
    if (ours != file.bytes && !write_saved_values(path, s.machine))
        return false;
    state.values = ours;
    state.our_values = ours;
    return true;
}

bool contains(const RecentListings& listings, const std::string& listing) {
    return std::find(listings.begin(), listings.end(), listing) != listings.end();
}

/// Ours stand before those that another instance has put there meanwhile.
bool save_recent(Simulator& s, StateFiles& state) {
    const std::string& path = state.paths.recent_listings;
    if (state.recent_unread)
        return true;
    const FileContents file = read_file(path, RECENT_FILE_MAX);
    for (const std::string& listing : parse_recent_listings(file.bytes)) {
        const bool is_anothers = !contains(s.recent, listing) && !contains(state.recent, listing);
        if (is_anothers && s.recent.size() < RECENT_LISTINGS_MAX)
            s.recent.push_back(listing);
    }
    const bool is_same = file.status == ReadStatus::READ && recent_listings_text(s.recent) == file.bytes;
    if (!is_same && (file.status == ReadStatus::UNREADABLE || !safe_write(path, recent_listings_text(s.recent))))
        return false;
    state.recent = s.recent;
    return true;
}

bool has_changed(const Simulator& s, const StateFiles& state) {
    return values_bytes(s.machine) != state.our_values || s.recent != state.recent ||
           settings_text(settings_to_save(s)) != settings_text(state.settings);
}

bool is_save_due(const Simulator& s, StateFiles& state, std::int64_t now) {
    constexpr std::int64_t STANDING = 5'000;
    constexpr std::int64_t RUNNING = 60'000;
    const bool is_another_listing = state.listing != s.preferences.last_file;
    const std::int64_t interval = s.machine.run.run_state == STATE_RUN ? RUNNING : STANDING;
    if (!is_another_listing && now - state.looked_at < interval)
        return false;
    state.looked_at = now;
    return is_another_listing || has_changed(s, state);
}

} // namespace

void read_state(Simulator& s, StateFiles& state) {
    if (!state.paths.folder.empty())
        remove_leftovers(state.paths.folder);
    if (!state.paths.settings.empty())
        read_settings_file(s, state);
    if (!state.paths.saved_values.empty())
        read_variables(s, state);
    if (!state.paths.recent_listings.empty())
        read_recent(s, state);
    state.settings = collect_settings(s.machine, s.preferences);
    state.recent = s.recent;
    state.listing = s.preferences.last_file;
}

std::vector<std::string> save_state(Simulator& s, StateFiles& state) {
    if (state.paths.settings.empty())
        return {};
    create_folder(state.paths.folder);
    std::vector<std::string> unsaved;
    if (!save_settings(s, state))
        unsaved.push_back(state.paths.settings);
    if (!save_values(s, state))
        unsaved.push_back(state.paths.saved_values);
    if (!save_recent(s, state))
        unsaved.push_back(state.paths.recent_listings);
    state.listing = s.preferences.last_file;
    return unsaved;
}

void save_when_due(Simulator& s, StateFiles& state, std::int64_t now) {
    if (!is_save_due(s, state, now))
        return;
    const std::vector<std::string> unsaved = save_state(s, state);
    if (!unsaved.empty() && !state.trouble_noted)
        s.window.note(unsaved_text(s, unsaved));
    state.trouble_noted = !unsaved.empty();
}

std::int64_t steady_milliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

std::string unsaved_text(const Simulator& s, const std::vector<std::string>& paths) {
    std::string text = lookup_message(s.machine.around->catalogue, "SAVE", 0);
    for (const std::string& path : paths)
        text += path + "\r\n";
    return text;
}

} // namespace quillon
