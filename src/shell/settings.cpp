// SPDX-License-Identifier: MIT
// The table of settings, made from core/settings.def, and what reads and writes the file by it.
#include "shell/settings.h"

#include "core/machine.h"
#include "core/setting_ranges.h"
#include "shell/profile.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <type_traits>

namespace quillon {
namespace {

constexpr std::string_view SECTION = "QZS";

template <typename Number>
Settings& part(StoredSettings& s, Number Settings::*) {
    return s.machine;
}
template <typename Number>
Preferences& part(StoredSettings& s, Number Preferences::*) {
    return s.preferences;
}
template <typename Number>
const Settings& part(const StoredSettings& s, Number Settings::*) {
    return s.machine;
}
template <typename Number>
const Preferences& part(const StoredSettings& s, Number Preferences::*) {
    return s.preferences;
}

template <auto Member>
constexpr NumberSetting number(int lowest, int highest, std::optional<int> otherwise = {}, int message = NO_MESSAGE) {
    return {[](const StoredSettings& s) { return static_cast<int>(part(s, Member).*Member); },
            [](StoredSettings& s, int number) {
                auto& place = part(s, Member).*Member;
                place = static_cast<std::remove_reference_t<decltype(place)>>(number);
            },
            lowest,
            highest,
            otherwise,
            message};
}

// Words of the table.
constexpr std::nullopt_t DEFAULT = std::nullopt;
constexpr std::nullopt_t no_dialog = std::nullopt;
constexpr int NONE = NO_MESSAGE;
constexpr DialogField in_dialog(int first = 0, int last = 0, int message = NONE) { return {first, last, message}; }

// NOLINTBEGIN(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define SETTING(label, field, lowest, highest, record, otherwise, message, dialog)                                     \
    {label, number<&Settings::field>(lowest, highest, otherwise, message), dialog},
#define WRITTEN_SETTING(label, field, lowest, highest, record, dialog)                                                 \
    {label, number<&Settings::field>(lowest, highest), dialog, false},
#define PREFERENCE(label, field, lowest, highest, otherwise, message, dialog)                                          \
    {label, number<&Preferences::field>(lowest, highest, otherwise, message), dialog},
#define PREFERENCE_TEXT(label, field, dialog) {label, TextSetting{&Preferences::field}, dialog},
#define PREFERENCE_COLOUR(label, field) {label, ColourSetting{&Preferences::field}},
#define SETTING_REMARK(label) {label, {}, std::nullopt, false},
// NOLINTEND(cppcoreguidelines-macro-usage)
constexpr SettingRow ROWS[] = {
#include "core/settings.def"
};

std::string_view key_of(const SettingRow& row) { return row.label.substr(0, row.label.find_first_of(" =")); }

bool is_remark(std::string_view line) { return without_blanks(line).starts_with(';'); }

/// Keeps the lines of a part of the file that are neither ours nor of no meaning.
void keep_other_lines(std::string_view text, bool keys_too, std::vector<std::string>& kept) {
    const char line_end = profile_line_end(text);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find(line_end));
        const auto entry = parse_profile_entry(line);
        if (is_remark(line) || (keys_too && entry && find_setting(entry->key) == nullptr))
            kept.emplace_back(without_blanks(line));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
}

void append_text(std::string& out, std::string_view value) {
    const bool has_a_place = value.find_first_of(std::string_view("\n\0", 2)) == std::string_view::npos;
    out += '"';
    out += has_a_place ? value : "";
    out += '"';
}

void append_value(std::string& out, const SettingRow& row, const StoredSettings& settings) {
    if (const auto* text = std::get_if<TextSetting>(&row.field))
        append_text(out, settings.preferences.*text->field);
    if (const auto* number = std::get_if<NumberSetting>(&row.field))
        out += std::to_string(number->get(settings));
    if (const auto* colour = std::get_if<ColourSetting>(&row.field)) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "0x%06x", settings.preferences.*colour->field);
        out += digits;
    }
}

} // namespace

std::span<const SettingRow> setting_rows() { return ROWS; }

const SettingRow* find_setting(std::string_view key) {
    const auto* found = std::find_if(std::begin(ROWS), std::end(ROWS),
                                     [key](const SettingRow& row) { return same_name(key_of(row), key); });
    return found == std::end(ROWS) ? nullptr : found;
}

int accepted_number(const NumberSetting& setting, int number, int message, std::vector<int>& messages) {
    if (number >= setting.lowest && number <= setting.highest)
        return number;
    if (message != NO_MESSAGE)
        messages.push_back(message);
    return setting.otherwise ? *setting.otherwise : setting.get({});
}

LoadedSettings parse_settings(std::string_view text) {
    const Profile profile = parse_profile(text);
    LoadedSettings loaded;
    StoredSettings& settings = loaded.settings;
    keep_other_lines(profile.head, false, settings.preferences.other_lines);
    const ProfileSection* ours = find_section(profile, SECTION);
    for (const ProfileSection& section : profile.sections) {
        if (&section != ours)
            settings.preferences.other_sections += section.text;
    }
    if (ours == nullptr)
        return loaded;
    keep_other_lines(ours->text, true, settings.preferences.other_lines);
    for (const SettingRow& row : ROWS) {
        if (const std::string* value = find_value(*ours, key_of(row)))
            set_setting(settings, key_of(row), *value, loaded.messages);
    }
    // The messages are numbered in the order in which they are shown, which is not that of the lines.
    std::sort(loaded.messages.begin(), loaded.messages.end());
    return loaded;
}

bool set_setting(StoredSettings& settings, std::string_view key, std::string_view value, std::vector<int>& messages) {
    const SettingRow* row = find_setting(key);
    if (row == nullptr || !row->is_read)
        return false;
    if (const auto* text = std::get_if<TextSetting>(&row->field))
        settings.preferences.*text->field = value.substr(0, value.find('\0'));
    else if (const auto* colour = std::get_if<ColourSetting>(&row->field))
        settings.preferences.*colour->field = static_cast<Colour>(parse_profile_integer(value)) & 0xFFFFFF;
    else if (const auto* number = std::get_if<NumberSetting>(&row->field))
        number->set(settings, accepted_number(*number, parse_profile_integer(value), number->message, messages));
    settings.machine.cursor_interval = cursor_interval_for(settings.machine.timer_interval);
    return true;
}

std::string settings_text(const StoredSettings& settings) {
    std::string text("[");
    text.append(SECTION).append("]");
    for (const SettingRow& row : ROWS) {
        text += '\n';
        text += row.label;
        append_value(text, row, settings);
    }
    for (const std::string& line : settings.preferences.other_lines)
        text += '\n' + line;
    return text + '\n' + settings.preferences.other_sections;
}

bool holds_settings(std::string_view text) {
    return text.empty() || find_section(parse_profile(text), SECTION) != nullptr;
}

StoredSettings merge_settings(const StoredSettings& in_file, const StoredSettings& ours, const StoredSettings& before) {
    StoredSettings merged = in_file;
    for (const SettingRow& row : ROWS) {
        if (const auto* text = std::get_if<TextSetting>(&row.field);
            text != nullptr && ours.preferences.*text->field != before.preferences.*text->field)
            merged.preferences.*text->field = ours.preferences.*text->field;
        if (const auto* number = std::get_if<NumberSetting>(&row.field);
            number != nullptr && (!row.is_read || number->get(ours) != number->get(before)))
            number->set(merged, number->get(ours));
        if (const auto* colour = std::get_if<ColourSetting>(&row.field);
            colour != nullptr && ours.preferences.*colour->field != before.preferences.*colour->field)
            merged.preferences.*colour->field = ours.preferences.*colour->field;
    }
    return merged;
}

int cursor_interval_for(int timer_interval) {
    constexpr int HALF_PERIOD = 417; // milliseconds
    return HALF_PERIOD / std::max(timer_interval, SettingRanges::timer_interval.lowest);
}

void apply_settings(Machine& m, const Settings& settings) {
    const int interval = m.speed.overdrive ? m.settings.timer_interval : settings.timer_interval;
    m.settings = settings;
    m.settings.timer_interval = interval;
    m.speed.saved_timer_interval = settings.timer_interval;
}

StoredSettings collect_settings(const Machine& m, const Preferences& preferences) {
    StoredSettings settings{m.settings, preferences};
    if (m.speed.overdrive)
        settings.machine.timer_interval = m.speed.saved_timer_interval;
    return settings;
}

} // namespace quillon
