// SPDX-License-Identifier: MIT
// The keys of the settings file as a table, in the order in which they are written, and what reads and writes by it.
#include "shell/settings.h"

#include "core/machine.h"
#include "keys/key_map.h"
#include "shell/profile.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <type_traits>
#include <variant>

namespace quillon {
namespace {

constexpr std::string_view SECTION = "QZS";
constexpr int NO_MESSAGE = -1;
constexpr int ANY = std::numeric_limits<int>::max();

/// The numbers that are accepted, and what stands in for the others.
struct Range {
    int first;
    int last;
    int otherwise;
    int message = NO_MESSAGE; ///< of section "INI"
};

struct TextField {
    std::string Preferences::*field;
};

/// A number, code or flag of either part, by ways to read and write it.
struct NumberField {
    int (*get)(const StoredSettings& settings);
    void (*set)(StoredSettings& settings, int number);
};

struct ColourField {
    Colour Preferences::*field;
};

using NoField = std::monostate;

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
constexpr NumberField number() {
    return {[](const StoredSettings& s) { return static_cast<int>(part(s, Member).*Member); },
            [](StoredSettings& s, int number) {
                auto& place = part(s, Member).*Member;
                place = static_cast<std::remove_reference_t<decltype(place)>>(number);
            }};
}

struct Row {
    std::string_view label; ///< key, "=" and the blanks around it, as they are written
    std::variant<NoField, TextField, NumberField, ColourField> field;
    std::optional<Range> range = std::nullopt; ///< of the numbers that are read back
};

// The blanks around "=" are the file's own and differ from key to key. Some ranges have no message: they keep out
// numbers that mean nothing (an angle unit or a file type that is none) or could only do harm (a negative wait).
// clang-format off
constexpr Row rows[] = {
    {"EDITOR = ",                 TextField{&Preferences::editor}},
    {"LASTFILE = ",               TextField{&Preferences::last_file}},
    {"FILETYPE = ",               number<&Preferences::file_type>(),       Range{ 0,   3,  0}},
    {"MODE = ",                   number<&Settings::angle_unit>(),         Range{ 0,   2,  0}},
    {"RUNPAGE= ",                 number<&Settings::run_page>(),           Range{ 0,   9,  0, 0}},
    {"TIMER= ",                   number<&Settings::timer_interval>(),     Range{TIMER_PERIOD_MIN, TIMER_PERIOD_MAX, 30, 1}},
    {"ZOOM= ",                    number<&Settings::zoom>(),               Range{ 1, ZOOM_MAX, 1, 2}},
    {"INPUTMODE= ",               number<&Settings::ascii_mode>(),         Range{ 0,   1,  1}},
    {"WAITPRINTSC_INI= ",         number<&Settings::wait_print_sc_ini>(),  Range{ 0, ANY,  0}},
    {"WAITPRINTSC= ",             number<&Settings::wait_print_sc>(),      Range{ 0, ANY,  0}},
    {"CURSOR_INT= ",              number<&Settings::cursor_interval>()},
    {"PCMBEEP= ",                 number<&Settings::pcm_beep>()},
    {"PALETTE= \"0xRRGGBB\"",     NoField{}},
    {"PAL_ON = ",                 ColourField{&Preferences::pal_on}},
    {"PAL_OFF = ",                ColourField{&Preferences::pal_off}},
    {"PAL_BG = ",                 ColourField{&Preferences::pal_bg}},
    {"DECIMAL = ",                number<&Settings::set_f_digits>(),       Range{-1,   9, -1, 4}},
    {"INTEGER = ",                number<&Settings::set_e_digits>(),       Range{-1,   8, -1, 3}},
    {"FIXED= ",                   number<&Settings::set_g_digits>(),       Range{ 0,  18,  9, 5}},
    {"STARTMODE= ",               number<&Preferences::start_mode>(),      Range{ 0,   1,  0}},
    {"BEEPVOLUME= ",              number<&Settings::beep_volume>(),        Range{ 0,  10, 10}},
    {"SOFTKEY= ",                 number<&Preferences::soft_keyboard>(),   Range{ 0,   1,  0}},
};
// clang-format on

std::string_view key_of(const Row& row) { return row.label.substr(0, row.label.find_first_of(" =")); }

const Row* find_row(std::string_view key) {
    const auto* found =
        std::find_if(std::begin(rows), std::end(rows), [key](const Row& row) { return same_name(key_of(row), key); });
    return found == std::end(rows) ? nullptr : found;
}

int accepted(int number, const Range& range, std::vector<int>& messages) {
    if (number >= range.first && number <= range.last)
        return number;
    if (range.message != NO_MESSAGE)
        messages.push_back(range.message);
    return range.otherwise;
}

bool is_remark(std::string_view line) { return without_blanks(line).starts_with(';'); }

/// Keeps the lines of a part of the file that are neither ours nor of no meaning.
void keep_other_lines(std::string_view text, bool keys_too, std::vector<std::string>& kept) {
    const char line_end = profile_line_end(text);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find(line_end));
        const auto entry = parse_profile_entry(line);
        if (is_remark(line) || (keys_too && entry && find_row(entry->key) == nullptr))
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

void append_value(std::string& out, const Row& row, const StoredSettings& settings) {
    if (const auto* text = std::get_if<TextField>(&row.field))
        append_text(out, settings.preferences.*text->field);
    if (const auto* number = std::get_if<NumberField>(&row.field))
        out += std::to_string(number->get(settings));
    if (const auto* colour = std::get_if<ColourField>(&row.field)) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "0x%06x", settings.preferences.*colour->field);
        out += digits;
    }
}

} // namespace

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
    for (const Row& row : rows) {
        if (const std::string* value = find_value(*ours, key_of(row)))
            set_setting(settings, key_of(row), *value, loaded.messages);
    }
    // The messages are numbered in the order in which they are shown, which is not that of the lines.
    std::sort(loaded.messages.begin(), loaded.messages.end());
    return loaded;
}

bool set_setting(StoredSettings& settings, std::string_view key, std::string_view value, std::vector<int>& messages) {
    const Row* row = find_row(key);
    if (row == nullptr)
        return false;
    if (const auto* text = std::get_if<TextField>(&row->field))
        settings.preferences.*text->field = value.substr(0, value.find('\0'));
    else if (const auto* colour = std::get_if<ColourField>(&row->field))
        settings.preferences.*colour->field = static_cast<Colour>(parse_profile_integer(value)) & 0xFFFFFF;
    else if (const auto* number = std::get_if<NumberField>(&row->field); number != nullptr && row->range)
        number->set(settings, accepted(parse_profile_integer(value), *row->range, messages));
    else
        return false;
    settings.machine.cursor_interval = cursor_interval_for(settings.machine.timer_interval);
    return true;
}

std::string settings_text(const StoredSettings& settings) {
    std::string text("[");
    text.append(SECTION).append("]");
    for (const Row& row : rows) {
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
    for (const Row& row : rows) {
        if (const auto* text = std::get_if<TextField>(&row.field);
            text != nullptr && ours.preferences.*text->field != before.preferences.*text->field)
            merged.preferences.*text->field = ours.preferences.*text->field;
        if (const auto* number = std::get_if<NumberField>(&row.field);
            number != nullptr && (!row.range || number->get(ours) != number->get(before))) // without one: never read
            number->set(merged, number->get(ours));
        if (const auto* colour = std::get_if<ColourField>(&row.field);
            colour != nullptr && ours.preferences.*colour->field != before.preferences.*colour->field)
            merged.preferences.*colour->field = ours.preferences.*colour->field;
    }
    return merged;
}

int cursor_interval_for(int timer_interval) {
    constexpr int HALF_PERIOD = 417; // milliseconds
    return HALF_PERIOD / std::max(timer_interval, TIMER_PERIOD_MIN);
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
