// The keys of the settings file as a table, in the order in which they are written, and what reads and writes by it.
#include "shell/settings.h"

#include "core/machine.h"
#include "keys/key_map.h"
#include "shell/files.h"
#include "shell/profile.h"
#include "shell/safe_write.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <type_traits>
#include <variant>

namespace quillon {
namespace {

constexpr std::string_view SECTION = "QZS";
constexpr std::size_t FILE_MAX = std::size_t{1} << 20;
constexpr int NO_MESSAGE = -1;
constexpr int ANY = std::numeric_limits<int>::max();

/// The numbers that are accepted, and what stands in for the others.
struct Range {
    int first;
    int last;
    int otherwise;
    int message = NO_MESSAGE; ///< of section "INI"
};

using NoField = std::monostate;
using TextField = std::string Settings::*;
using NumberField = int Settings::*;
using ColourField = Colour Settings::*;

struct Row {
    std::string_view label; ///< key, "=" and the blanks around it, as they are written
    std::variant<NoField, TextField, NumberField, ColourField> field;
    std::optional<Range> range = std::nullopt; ///< of the numbers that are read back
};

// The blanks around "=" are the file's own and differ from key to key. Some ranges have no message: they keep out
// numbers that mean nothing (an angle unit or a file type that is none) or could only do harm (a negative wait).
// clang-format off
constexpr Row rows[] = {
    {"EDITOR = ",                 &Settings::editor},
    {"LASTFILE = ",               &Settings::last_file},
    {"FILETYPE = ",               &Settings::file_type,         Range{ 0,   3,  0}},
    {"MODE = ",                   &Settings::angle_unit,        Range{ 0,   2,  0}},
    {"RUNPAGE= ",                 &Settings::run_page,          Range{ 0,   9,  0, 0}},
    {"TIMER= ",                   &Settings::timer_interval,    Range{TIMER_PERIOD_MIN, TIMER_PERIOD_MAX, 30, 1}},
    {"ZOOM= ",                    &Settings::zoom,              Range{ 1, ZOOM_MAX, 1, 2}},
    {"INPUTMODE= ",               &Settings::ascii_mode,        Range{ 0,   1,  1}},
    {"WAITPRINTSC_INI= ",         &Settings::wait_print_sc_ini, Range{ 0, ANY,  0}},
    {"WAITPRINTSC= ",             &Settings::wait_print_sc,     Range{ 0, ANY,  0}},
    {"CURSOR_INT= ",              &Settings::cursor_interval},
    {"PCMBEEP= ",                 &Settings::pcm_beep},
    {"PALETTE= \"0xRRGGBB\"",     NoField{}},
    {"PAL_ON = ",                 &Settings::pal_on},
    {"PAL_OFF = ",                &Settings::pal_off},
    {"PAL_BG = ",                 &Settings::pal_bg},
    {"DECIMAL = ",                &Settings::set_f_digits,      Range{-1,   9, -1, 4}},
    {"INTEGER = ",                &Settings::set_e_digits,      Range{-1,   8, -1, 3}},
    {"FIXED= ",                   &Settings::set_g_digits,      Range{ 0,  18,  9, 5}},
    {"STARTMODE= ",               &Settings::start_mode,        Range{ 0,   1,  0}},
    {"BEEPVOLUME= ",              &Settings::beep_volume,       Range{ 0,  10, 10}},
    {"SOFTKEY= ",                 &Settings::soft_keyboard,     Range{ 0,   1,  0}},
};
// clang-format on

/// A setting and the field of the record that holds it.
struct RecordRow {
    NumberField setting;
    int Machine::*field;
};

// Without the interval between ticks, which Overdrive shortens in the record.
constexpr RecordRow record_rows[] = {
    {&Settings::angle_unit, &Machine::angle_unit},
    {&Settings::run_page, &Machine::run_page},
    {&Settings::zoom, &Machine::zoom},
    {&Settings::ascii_mode, &Machine::ascii_mode},
    {&Settings::wait_print_sc_ini, &Machine::wait_print_sc_ini},
    {&Settings::wait_print_sc, &Machine::wait_print_sc},
    {&Settings::cursor_interval, &Machine::cursor_interval},
    {&Settings::pcm_beep, &Machine::pcm_beep},
    {&Settings::set_f_digits, &Machine::set_f_digits},
    {&Settings::set_e_digits, &Machine::set_e_digits},
    {&Settings::set_g_digits, &Machine::set_g_digits},
    {&Settings::beep_volume, &Machine::beep_volume},
};

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

void append_value(std::string& out, const Row& row, const Settings& settings) {
    if (const auto* text = std::get_if<TextField>(&row.field))
        append_text(out, settings.**text);
    if (const auto* number = std::get_if<NumberField>(&row.field))
        out += std::to_string(settings.**number);
    if (const auto* colour = std::get_if<ColourField>(&row.field)) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "0x%06x", settings.**colour);
        out += digits;
    }
}

} // namespace

LoadedSettings parse_settings(std::string_view text) {
    const Profile profile = parse_profile(text);
    LoadedSettings loaded;
    Settings& settings = loaded.settings;
    keep_other_lines(profile.head, false, settings.other_lines);
    const ProfileSection* ours = find_section(profile, SECTION);
    for (const ProfileSection& section : profile.sections) {
        if (&section != ours)
            settings.other_sections += section.text;
    }
    if (ours == nullptr)
        return loaded;
    keep_other_lines(ours->text, true, settings.other_lines);
    for (const Row& row : rows) {
        if (const std::string* value = find_value(*ours, key_of(row)))
            set_setting(settings, key_of(row), *value, loaded.messages);
    }
    // The messages are numbered in the order in which they are shown, which is not that of the lines.
    std::sort(loaded.messages.begin(), loaded.messages.end());
    return loaded;
}

bool set_setting(Settings& settings, std::string_view key, std::string_view value, std::vector<int>& messages) {
    const Row* row = find_row(key);
    if (row == nullptr)
        return false;
    if (const auto* text = std::get_if<TextField>(&row->field))
        settings.** text = value.substr(0, value.find('\0'));
    else if (const auto* colour = std::get_if<ColourField>(&row->field))
        settings.** colour = static_cast<Colour>(parse_profile_integer(value)) & 0xFFFFFF;
    else if (const auto* number = std::get_if<NumberField>(&row->field); number != nullptr && row->range)
        settings.** number = accepted(parse_profile_integer(value), *row->range, messages);
    else
        return false;
    settings.cursor_interval = cursor_interval_for(settings.timer_interval);
    return true;
}

std::string settings_text(const Settings& settings) {
    std::string text("[");
    text.append(SECTION).append("]");
    for (const Row& row : rows) {
        text += '\n';
        text += row.label;
        append_value(text, row, settings);
    }
    for (const std::string& line : settings.other_lines)
        text += '\n' + line;
    return text + '\n' + settings.other_sections;
}

bool holds_settings(std::string_view text) {
    return text.empty() || find_section(parse_profile(text), SECTION) != nullptr;
}

bool write_settings(const std::string& path, const Settings& settings) {
    const std::string text = settings_text(settings);
    const FileContents old = read_file(path, FILE_MAX);
    if (old.status == ReadStatus::UNREADABLE || text.size() > FILE_MAX)
        return false;
    const bool is_understood = old.status != ReadStatus::TOO_LARGE && holds_settings(old.bytes);
    return is_understood ? safe_write(path, text) : safe_write_keeping_old(path, text);
}

Settings merge_settings(const Settings& in_file, const Settings& ours, const Settings& before) {
    Settings merged = in_file;
    const auto merge_field = [&](const auto& field) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(field)>, NoField>) {
            if (ours.*field != before.*field)
                merged.*field = ours.*field;
        }
    };
    for (const Row& row : rows)
        std::visit(merge_field, row.field);
    merged.pcm_beep = ours.pcm_beep; // these two are written and never read
    merged.cursor_interval = ours.cursor_interval;
    return merged;
}

int cursor_interval_for(int timer_interval) {
    constexpr int HALF_PERIOD = 417; // milliseconds
    return HALF_PERIOD / std::max(timer_interval, TIMER_PERIOD_MIN);
}

void apply_settings(Machine& m, const Settings& settings) {
    for (const RecordRow& row : record_rows)
        m.*row.field = settings.*row.setting;
    m.saved_timer_interval = settings.timer_interval;
    if (m.overdrive == 0)
        m.timer_interval = settings.timer_interval;
}

void collect_settings(const Machine& m, Settings& settings) {
    for (const RecordRow& row : record_rows)
        settings.*row.setting = m.*row.field;
    settings.timer_interval = m.overdrive != 0 ? m.saved_timer_interval : m.timer_interval;
}

} // namespace quillon
