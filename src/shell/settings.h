// SPDX-License-Identifier: MIT
// The settings: their values and defaults, the text of their file (section QZS of a profile), and their way into the
// machine's record and back. Everything else in the text that a person or a later version put there is kept.
#pragma once

#include "core/machine.h"
#include "display/skin_palette.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillon {

/// Settings that are not the machine's own.
struct Preferences {
    std::string editor = "notepad.exe"; ///< path of the editor, any bytes; empty for none
    std::string last_file;              ///< path of the listing, any bytes; empty for none
    int file_type = 0;                  ///< which files the open dialog shows: 1 all, 2 BAS, 3 TXT; 0 not chosen yet
    Colour pal_on = LcdColours{}.lit;
    Colour pal_off = LcdColours{}.unlit;
    Colour pal_bg = LcdColours{}.background;
    int start_mode = 0;    ///< 1: the program starts in command mode
    int soft_keyboard = 0; ///< 1: the soft keyboard is open at the start

    std::vector<std::string> other_lines; ///< remarks, and the lines of keys in section QZS that are none of these
    std::string other_sections;           ///< the file's other sections as they stand there
};

/// All that the settings file holds.
struct StoredSettings {
    Settings machine; ///< with the interval between ticks as configured, never that of Overdrive
    Preferences preferences;
};

// The table of settings: the rows of core/settings.def, which says what the columns mean.

constexpr int NO_MESSAGE = -1;

struct TextSetting {
    std::string Preferences::*field;
};

struct ColourSetting {
    Colour Preferences::*field;
};

/// A number, code or flag of either part, by ways to read and write it.
struct NumberSetting {
    int (*get)(const StoredSettings& settings);
    void (*set)(StoredSettings& settings, int number);
    int lowest;
    int highest;
    std::optional<int> otherwise = std::nullopt; ///< nothing for the default
    int message = NO_MESSAGE;                    ///< of section INI
};

/// A field of the configuration dialog.
struct DialogField {
    int first; ///< of a number: the ends between which its arrows lead
    int last;
    int message = NO_MESSAGE; ///< of section DLG_CONFIG; without one the nearer end is taken
};

struct SettingRow {
    std::string_view label; ///< key, "=" and the blanks around it, as they are written
    std::variant<std::monostate, TextSetting, NumberSetting, ColourSetting> field;
    std::optional<DialogField> dialog = std::nullopt;
    bool is_read = true; ///< back from the file
};

std::span<const SettingRow> setting_rows();

/// The row of a key, in letters of either case; null when there is none.
const SettingRow* find_setting(std::string_view key);

/// The number, where it lies in the setting's range; else what takes its place, and the message, if any, is appended.
int accepted_number(const NumberSetting& setting, int number, int message, std::vector<int>& messages);

/// Settings as they were read, and the numbers of the "INI" messages for values that were not accepted, in order.
struct LoadedSettings {
    StoredSettings settings;
    std::vector<int> messages;
};

/// Reads settings from the text of their file. Any bytes will do: what is not there, or not accepted, has its default.
LoadedSettings parse_settings(std::string_view text);

/// Gives one key, in letters of either case, the value with this text. False for a key that is not one of those that
/// are read. In place of a value that is not accepted stands its default (0 for a negative wait); its message, if it
/// has one, is appended.
bool set_setting(StoredSettings& settings, std::string_view key, std::string_view value, std::vector<int>& messages);

/// The text of the settings file. A path with a line feed or a NUL has no place in it and is written as empty.
std::string settings_text(const StoredSettings& settings);

/// Whether the text of a settings file is understood: it has settings in it, or nothing at all.
bool holds_settings(std::string_view text);

/// The settings of two instances in one: those of `ours` that differ from `before`; all others, and the lines that are
/// no settings, as they are in the file.
StoredSettings merge_settings(const StoredSettings& in_file, const StoredSettings& ours, const StoredSettings& before);

/// Ticks of a blink phase of the cursor for an interval between ticks in milliseconds.
int cursor_interval_for(int timer_interval);

/// Puts settings into the machine.
void apply_settings(Machine& m, const Settings& settings);

/// The settings as they are to be stored now.
StoredSettings collect_settings(const Machine& m, const Preferences& preferences);

} // namespace quillon
