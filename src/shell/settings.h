// The settings: their values and defaults, their file `QZ740.ini` (section QZS of a profile), and their way into the
// machine's record and back. Everything else in the file that a person or a later version put there is kept.
#pragma once

#include "display/image.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

struct Machine;

constexpr int TIMER_PERIOD_MIN = 1; ///< milliseconds between ticks that a host can keep
constexpr int TIMER_PERIOD_MAX = 1000;

/// The settings with their defaults. Those that the machine's record has too are current there while the program runs;
/// the rest belongs to the host.
struct Settings {
    std::string editor = "notepad.exe"; ///< path of the editor, any bytes; empty for none
    std::string last_file;              ///< path of the listing, any bytes; empty for none
    int file_type = 0;                  ///< which files the open dialog shows: 1 all, 2 BAS, 3 TXT; 0 not chosen yet
    int angle_unit = 0;                 ///< 0 DEG, 1 RAD, 2 GRA
    int run_page = 0;                   ///< 0-9
    int timer_interval = 30;            ///< milliseconds, as configured: never that of Overdrive
    int zoom = 1;                       ///< 1-12; the window draws as large as the screen allows
    int ascii_mode = 1;                 ///< 0 or 1
    int wait_print_sc_ini = 64;         ///< ticks
    int wait_print_sc = 24;             ///< ticks
    int cursor_interval = 13;           ///< ticks; follows from `timer_interval` when that is read
    int pcm_beep = 1;                   ///< 0 or 1; written, but 1 whenever the settings are read
    Colour pal_on = 0x001900;           ///< a lit dot
    Colour pal_off = 0x90B068;          ///< an unlit dot
    Colour pal_bg = 0xB0C86E;           ///< the background of the LCD
    int set_f_digits = -1;              ///< -1-9 when read; up to 99 while the program runs
    int set_e_digits = -1;              ///< -1-8 when read; up to 99 while the program runs
    int set_g_digits = 9;               ///< 0-18
    int start_mode = 0;                 ///< 1: the program starts in command mode
    int beep_volume = 10;               ///< 0-10
    int soft_keyboard = 0;              ///< 1: the soft keyboard is open at the start

    std::vector<std::string> other_lines; ///< remarks, and the lines of keys in section QZS that are none of these
    std::string other_sections;           ///< the file's other sections as they stand there
};

/// Settings as they were read, and the numbers of the "INI" messages for values that were not accepted, in order.
struct LoadedSettings {
    Settings settings;
    std::vector<int> messages;
};

/// Reads settings from the text of their file. Any bytes will do: what is not there, or not accepted, has its default.
LoadedSettings parse_settings(std::string_view text);

/// Gives one key, in letters of either case, the value with this text. False for a key that is not one of those that
/// are read. In place of a value that is not accepted stands its default (0 for a negative wait); its message, if it
/// has one, is appended.
bool set_setting(Settings& settings, std::string_view key, std::string_view value, std::vector<int>& messages);

/// The text of the settings file. A path with a line feed or a NUL has no place in it and is written as empty.
std::string settings_text(const Settings& settings);

/// Whether the text of a settings file is understood: it has settings in it, or nothing at all.
bool holds_settings(std::string_view text);

/// Writes the settings file whole; false when it fails, when the old file cannot be read, and when the new one would be
/// too large to be read again: then the old file is there still. One that holds no settings stays beside the new one
/// under a name that ends in ".bad".
bool write_settings(const std::string& path, const Settings& settings);

/// The settings of two instances in one: those of `ours` that differ from `before`; all others, and the lines that are
/// no settings, as they are in the file.
Settings merge_settings(const Settings& in_file, const Settings& ours, const Settings& before);

/// Ticks of a blink phase of the cursor for an interval between ticks in milliseconds.
int cursor_interval_for(int timer_interval);

/// Puts those settings that the machine's record has into it.
void apply_settings(Machine& m, const Settings& settings);

/// Takes those settings from the machine's record; the others stay as they are.
void collect_settings(const Machine& m, Settings& settings);

} // namespace quillon
