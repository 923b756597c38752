// SPDX-License-Identifier: MIT
// The settings: their values and defaults, the text of their file (section QZS of a profile), and their way into the
// machine's record and back. Everything else in the text that a person or a later version put there is kept.
#pragma once

#include "core/machine.h"
#include "display/image.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

constexpr int TIMER_PERIOD_MIN = 1; ///< milliseconds between ticks that a host can keep
constexpr int TIMER_PERIOD_MAX = 1000;

/// Settings that are not the machine's own.
struct Preferences {
    std::string editor = "notepad.exe"; ///< path of the editor, any bytes; empty for none
    std::string last_file;              ///< path of the listing, any bytes; empty for none
    int file_type = 0;                  ///< which files the open dialog shows: 1 all, 2 BAS, 3 TXT; 0 not chosen yet
    Colour pal_on = 0x001900;           ///< a lit dot
    Colour pal_off = 0x90B068;          ///< an unlit dot
    Colour pal_bg = 0xB0C86E;           ///< the background of the LCD
    int start_mode = 0;                 ///< 1: the program starts in command mode
    int soft_keyboard = 0;              ///< 1: the soft keyboard is open at the start

    std::vector<std::string> other_lines; ///< remarks, and the lines of keys in section QZS that are none of these
    std::string other_sections;           ///< the file's other sections as they stand there
};

/// All that the settings file holds.
struct StoredSettings {
    Settings machine; ///< with the interval between ticks as configured, never that of Overdrive
    Preferences preferences;
};

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
