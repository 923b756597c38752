// SPDX-License-Identifier: MIT
// The settings file: every key with its ends (settings.txt), the written form to the byte, what else stands in the
// file.
#include "shell/settings.h"

#include "core/machine.h"
#include "shell/profile.h"
#include "tests/support/cases_file.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace quillon::testing {
namespace {

using Numbers = std::vector<int>;

LoadedSettings parse_lines(const std::string& lines) { return parse_settings("[QZS]\n" + lines + "\n"); }

/// The file's text to the byte: as it is with nothing set, and with everything.
const std::string DEFAULT_TEXT = get_file(QUILLON_TESTS "/shell/settings_default.ini");
const std::string OTHER_TEXT = get_file(QUILLON_TESTS "/shell/settings_other.ini");

TEST(Settings, AreWrittenToTheByte) {
    EXPECT_EQ(settings_text({}), DEFAULT_TEXT);
    const LoadedSettings read = parse_settings(OTHER_TEXT);
    EXPECT_EQ(read.messages, Numbers{});
    EXPECT_EQ(read.settings.preferences.editor, "/opt/my editor");
    EXPECT_EQ(read.settings.preferences.pal_on, 0xFF8000U);
    EXPECT_EQ(settings_text(read.settings), OTHER_TEXT);
}

/// The lines of the text that is written with these settings which are others than the usual ones; the messages.
std::string effect_of(const LoadedSettings& loaded) {
    std::istringstream written(settings_text(loaded.settings)), usual(DEFAULT_TEXT);
    std::string effect;
    const auto tell = [&effect](const std::string& text) { effect += (effect.empty() ? "" : ", ") + text; };
    for (std::string line, usual_line; std::getline(written, line);) {
        std::getline(usual, usual_line);
        if (line != usual_line)
            tell(line);
    }
    for (const int message : loaded.messages)
        tell("INI " + std::to_string(message));
    return effect;
}

TEST(Settings, HaveTheirRanges) {
    expect_cases("shell/settings.txt", [](const FileCase& row) { return effect_of(parse_lines(row.input)); });
}

TEST(Settings, PathsComeBackByteForByte) {
    const std::string paths[] = {
        "",         "/a b/c.bas",        " /blanks ", "\"/quoted\"",          "/a\"b", "\"", "/a\"",
        "/x;y=[z]", "/\xC3\xA4\xFF\x80", "/tab\t\r",  std::string(5000, 'p'),
    };
    StoredSettings settings;
    Preferences& preferences = settings.preferences;
    for (const std::string& path : paths) {
        preferences.editor = preferences.last_file = path;
        const Preferences read = parse_settings(settings_text(settings)).settings.preferences;
        EXPECT_EQ(read.editor, path);
        EXPECT_EQ(read.last_file, path);
    }
    preferences.editor = Preferences{}.editor;
    for (const std::string& path : {std::string("/a\nTIMER= 7"), std::string("/a\0b", 4)}) {
        preferences.last_file = path;
        EXPECT_EQ(settings_text(settings), DEFAULT_TEXT) << path;
    }
    EXPECT_EQ(parse_lines("LASTFILE = /plain path").settings.preferences.last_file, "/plain path");
}

TEST(Settings, KeepWhatElseStandsInTheFile) {
    const std::string text = "\xEF\xBB\xBF; on top\r\nnothing\n[Window]\r\nx=1\r\n\r\n; two\n[qzs]\r\n"
                             "  THEME = dark\r\n\n;TIMER= 5\nTimer=40\ngarbage\nPCMBEEP=0\nLANG=ja\n"
                             "TIMER=50\n[Other]\n[QZS]\nTIMER=60\nlast";
    const LoadedSettings read = parse_settings(text);
    EXPECT_EQ(read.settings.machine.timer_interval, 40);
    EXPECT_TRUE(read.settings.machine.pcm_beep);
    std::string expected = DEFAULT_TEXT;
    expected.replace(expected.find("TIMER= 30"), 9, "TIMER= 40");
    expected.replace(expected.find("CURSOR_INT= 13"), 14, "CURSOR_INT= 10");
    expected += "; on top\nTHEME = dark\n;TIMER= 5\nLANG=ja\n"
                "[Window]\r\nx=1\r\n\r\n; two\n[Other]\n[QZS]\nTIMER=60\nlast";
    EXPECT_EQ(settings_text(read.settings), expected);
    EXPECT_EQ(settings_text(parse_settings(expected).settings), expected);
}

TEST(Settings, OneByOne) {
    StoredSettings settings;
    Numbers messages;
    EXPECT_TRUE(set_setting(settings, "timer", "10", messages));
    EXPECT_EQ(settings.machine.cursor_interval, 41);
    EXPECT_TRUE(set_setting(settings, "ZOOM", "13", messages));
    EXPECT_EQ(messages, Numbers{2});
    for (const char* key : {"", "TIMERS", "PALETTE", "CURSOR_INT", "PCMBEEP"})
        EXPECT_FALSE(set_setting(settings, key, "5", messages)) << key;
}

TEST(Settings, GoIntoTheRecordAndBack) {
    const auto machine = std::make_unique<Machine>();
    Machine& m = *machine;
    const StoredSettings settings = parse_settings(OTHER_TEXT).settings;
    apply_settings(m, settings.machine);
    EXPECT_EQ(m.settings, settings.machine);
    EXPECT_FALSE(m.settings == Settings{});
    m.settings.zoom = 12;
    m.speed.overdrive = true;
    m.speed.saved_timer_interval = 77;
    const StoredSettings back = collect_settings(m, settings.preferences);
    EXPECT_EQ((Numbers{back.machine.zoom, back.machine.timer_interval}), (Numbers{12, 77}));
    EXPECT_EQ(back.preferences.last_file, "/users/me/a.bas");
    apply_settings(m, settings.machine); // Overdrive stays
    EXPECT_EQ((Numbers{m.settings.timer_interval, m.speed.saved_timer_interval}), (Numbers{5, 5}));
}

TEST(Settings, MayHaveTheLineEndsOfAnySystem) {
    for (const char* ends : {"\n", "\r\n", "\r"}) {
        std::string text = "[QZS] ZOOM=3\n; mine\nRUNPAGE=4\nNEW=1\n[OTHER]\nX=1\n";
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += std::string_view(ends).size())
            text.replace(at, 1, ends);
        const auto [machine, preferences] = parse_settings(text).settings;
        EXPECT_EQ((std::vector{machine.zoom, machine.run_page}), (std::vector{3, 4}));
        EXPECT_EQ(preferences.other_lines, (std::vector<std::string>{"; mine", "NEW=1"}));
        EXPECT_TRUE(preferences.other_sections.starts_with("[OTHER]"));
    }
}

// --- The form of the file: sections, keys, values, and what is none of them (profile.txt) ---

std::string value_of_key(std::string_view text) {
    const Profile profile = parse_profile(text);
    const ProfileSection* section = find_section(profile, "QZS");
    const std::string* value = section == nullptr ? nullptr : find_value(*section, "KEY");
    return value == nullptr ? "none" : "|" + *value + "|";
}

TEST(Profile, FindsValues) {
    expect_cases("shell/profile.txt",
                 {{"values", [](const FileCase& row) { return value_of_key(row.input); }},
                  {"integers", [](const FileCase& row) { return std::to_string(parse_profile_integer(row.input)); }}});
    EXPECT_EQ(parse_profile_integer("  30  "), 30);
    EXPECT_EQ(parse_profile_integer(""), 0);
    EXPECT_EQ(value_of_key("  [ QZS ] tail\r\n\t KEY \t=\t 5 6 \t\r\n"), "|5 6|");
    EXPECT_EQ(value_of_key("\xEF\xBB\xBF[QZS]\nKEY=5\n"), "|5|");
    EXPECT_EQ(value_of_key(""), "none");
}

TEST(Profile, KeepsOrderAndWholeLines) {
    const Profile profile = parse_profile("junk\n[A]\n x = \"1\" \r\nnothing\n[B]\n[A]\ny=2\n");
    std::string told;
    for (const ProfileSection& section : profile.sections) {
        told += section.name + ":";
        for (const ProfileEntry& entry : section.entries)
            told += entry.key + "," + entry.value + "," + entry.line + ";";
    }
    EXPECT_EQ(told, "A:x,1,x = \"1\";B:A:y,2,y=2;");
}

} // namespace
} // namespace quillon::testing
