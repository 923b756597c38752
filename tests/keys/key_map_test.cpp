// SPDX-License-Identifier: MIT
// The PC keyboard: every row of the key-down table and every cell of the two key tables in both modes, Alt, characters
// of the user's own layout, and the function keys.
#include "core/controls.h"
#include "keys/key_map.h"

#include "core/charset.h"
#include "keys/physical_keys.h"
#include "tests/support/cases_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <map>

namespace quillon::testing {
namespace {

/// A machine in one of the modes, and a host that notes what keys ask of it.
struct KeyMachine : TestMachine {
    explicit KeyMachine(bool ascii_mode) {
        m.settings.ascii_mode = ascii_mode;
        simulator->around.host.run_command = [this](int command) { log += std::to_string(command); };
        simulator->around.host.resize_window = [this] { log += "resize"; };
        simulator->around.host.take_snapshot = [this] { log += "snapshot"; };
        simulator->around.host.write_dump = [this] { log += "dump"; };
    }

    /// The pending key after a key-down with Shift (1), Ctrl (2), Alt (4) held.
    std::string typed(int virtual_key, int modifiers = 0) {
        hold(modifiers);
        m.keys.key_string = "OLD";
        m.keys.held_key = 0;
        on_key_down(m, virtual_key, false);
        return std::string(m.keys.key_string.view());
    }

    void hold(int modifiers) {
        m.keys.shift_flag = (modifiers & 1) != 0;
        m.keys.ctrl_flag = (modifiers & 2) != 0;
        m.keys.alt_flag = (modifiers & 4) != 0;
    }

    std::string log;
};

std::string escaped(std::string_view raw) {
    char text[64];
    if (raw.size() == 1 && as_byte(raw[0]) <= 0x20)
        std::snprintf(text, sizeof text, "<%02x>", as_byte(raw[0]));
    else
        escape_text(raw, text, sizeof text);
    return text;
}

/// What every other virtual key types, or asks, than its own code.
TEST(KeyMap, EveryVirtualKey) {
    std::map<std::string, std::map<int, std::string>> rows; // by heading
    for (const FileCase& row : read_cases("keys/virtual_keys.txt"))
        rows[row.heading][std::stoi(row.input)] = row.expected;
    const auto& acting = rows.at("acts in both modes");
    for (const int ascii_mode : {0, 1}) {
        auto expected = rows.at("types in both modes");
        expected.merge(std::map(rows.at(ascii_mode != 0 ? "types in ASCII mode" : "types in machine mode")));
        for (int key = -1; key <= 300; ++key) {
            SCOPED_TRACE(std::to_string(key) + " in mode " + std::to_string(ascii_mode));
            KeyMachine t(ascii_mode != 0);
            const bool acts = acting.contains(key);
            std::string text = key >= 32 && key <= 127 && !acts ? escaped(std::string(1, static_cast<char>(key))) : "";
            if (expected.contains(key))
                text = expected[key];
            EXPECT_EQ(escaped(t.typed(key)), text);
            EXPECT_EQ(t.m.keys.held_key, text.empty() || key == 187 ? 0 : key);
            EXPECT_EQ(t.log, acts ? acting.at(key) : "");
            EXPECT_EQ(t.m.keys.enter_request, key == 13);
            EXPECT_FALSE(t.m.trace.trace_step_request);
        }
    }
}

struct PlaceCase {
    const char* name;
    int scan_code;
    int virtual_key;
};

/// The places where a Japanese keyboard differs from others, the ends of the rows, and what is outside of them.
TEST(PhysicalKeys, HaveTheVirtualKeysOfAJapaneseKeyboard) {
    constexpr PlaceCase PLACES[] = {
        {"Digit1", 2, '1'},    {"Digit0", 11, '0'},    {"Minus", 12, 189},         {"Equal", 13, 222},
        {"KeyQ", 16, 'Q'},     {"KeyP", 25, 'P'},      {"BracketLeft", 26, 192},   {"BracketRight", 27, 219},
        {"KeyA", 30, 'A'},     {"KeyL", 38, 'L'},      {"Semicolon", 39, 187},     {"Quote", 40, 186},
        {"Backquote", 41, 0},  {"Backslash", 43, 221}, {"KeyZ", 44, 'Z'},          {"KeyM", 50, 'M'},
        {"Slash", 53, 191},    {"Space", 57, ' '},     {"IntlBackslash", 86, 226}, {"IntlRo", 89, 226},
        {"IntlYen", 124, 220},
    };
    for (const auto& [name, scan_code, virtual_key] : PLACES) {
        EXPECT_EQ(virtual_key_at_place(name), virtual_key) << name;
        EXPECT_EQ(virtual_key_of_scan_code(scan_code), virtual_key) << name;
    }
    for (const auto& [name, virtual_key] : std::map<const char*, int>{{"Numpad7", 103},
                                                                      {"NumpadEnter", 13},
                                                                      {"ArrowUp", 38},
                                                                      {"F12", 123},
                                                                      {"MetaLeft", 0},
                                                                      {"keyq", 0},
                                                                      {"", 0}})
        EXPECT_EQ(virtual_key_at_place(name), virtual_key) << name;
    for (const int scan_code : {-8, 0, 1, 14, 28, 58, 71, 125, 1000})
        EXPECT_FALSE(virtual_key_of_scan_code(scan_code)) << scan_code;
}

TEST(KeyMap, KeysThatDependOnTheMachine) {
    KeyMachine t(true);
    on_key_down(t.m, 13, true);
    EXPECT_FALSE(t.m.keys.enter_request) << "Enter, held";
    t.m.trace.trace_mode = true;
    t.typed(9);
    EXPECT_TRUE(t.m.trace.trace_step_request);
    t.m.run.run_state = STATE_COMMAND;
    EXPECT_EQ(t.typed(27) + t.typed(19) + t.log, "") << "there is nothing to stop in command mode";
    for (const int zoom : {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 12}) {
        t.typed(113);
        EXPECT_EQ(t.m.settings.zoom, zoom);
    }
    for (int i = 0; i < 20; ++i)
        t.typed(112);
    EXPECT_EQ(t.m.settings.zoom, 1);
}

/// What a key types on all levels of a mode: "[A,GOSUB ,a,\\ci,SIN ]".
OutcomeOfCase levels(int ascii_mode) {
    return [=](const FileCase& row) {
        KeyMachine t(ascii_mode != 0);
        const int key = row.input.size() == 1 ? as_byte(row.input[0]) : std::stoi(row.input);
        std::string joined = "[" + escaped(t.typed(key, 0));
        for (int modifiers = 1; modifiers <= 4; ++modifiers)
            joined += "," + escaped(t.typed(key, modifiers));
        EXPECT_EQ(t.typed(key, 5), t.typed(key, 4)) << "Shift and Alt: as Alt";
        for (const int modifiers : {6, 7})
            EXPECT_EQ(t.typed(key, modifiers), t.typed(key, 0)) << "Ctrl and Alt: as alone";
        return joined + "]";
    };
}

TEST(KeyMap, Levels) { expect_cases("keys/key_levels.txt", {{"machine mode", levels(0)}, {"ASCII mode", levels(1)}}); }

TEST(KeyMap, AltTypesFunctionWordsInMachineModeOnly) {
    const std::map<int, std::string> keys = {{'A', "SIN "}, {'N', "RAN#"}, {'Q', "Q"}, {'5', "5"}, {' ', " "},
                                             {31, ""},      {127, "\x7F"}, {128, ""},  {13, ""},   {115, "s"}};
    for (const int ascii_mode : {0, 1}) {
        for (const auto& [key, text] : keys) {
            KeyMachine t(ascii_mode != 0);
            t.hold(4);
            t.m.keys.key_string = "OLD";
            t.m.keys.held_key = 'X';
            on_sys_key_down(t.m, key);
            EXPECT_EQ(t.m.keys.key_string.view(), ascii_mode != 0 ? "OLD" : text) << key;
            EXPECT_EQ(t.m.keys.held_key, ascii_mode != 0 ? 'X' : text.empty() ? 0 : key) << key;
            EXPECT_EQ(t.log, "") << key;
        }
    }
}

TEST(KeyMap, CharactersAreTypedAsTheyAreButForTheCaseOfLetters) {
    KeyMachine t(true);
    const std::string before = "aAzZ5\"_@[{`\x87";
    const std::string typed[] = {"AAZZ5\"_@[{`\x87", "aazz5\"_@[{`\x87"};
    for (const int shift : {0, 1}) {
        t.hold(shift);
        for (std::size_t i = 0; i < before.size(); ++i) {
            on_character(t.m, before[i], CHARACTER_KEY_BASE + 7);
            EXPECT_EQ(t.m.keys.key_string.view(), typed[shift].substr(i, 1));
            EXPECT_EQ(t.m.keys.held_key, CHARACTER_KEY_BASE + 7);
        }
    }
}

} // namespace
} // namespace quillon::testing
