// SPDX-License-Identifier: MIT
// The PC keyboard: every virtual key and all levels in both modes, Alt, characters of the user's own layout, the
// function keys, and the places of keys.
#include "core/controls.h"
#include "keys/key_map.h"
#include "keys/soft_keys.h"

#include "core/charset.h"
#include "keys/physical_keys.h"
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

/// What keys do at once, in both modes.
const std::map<int, std::string> ACTS = {
    {9, ""},        {13, ""},       {19, "40004"},  {27, "40004"}, {112, "resize"}, {113, "resize"}, {114, "40043"},
    {115, "40015"}, {116, "40003"}, {117, "40041"}, {120, "dump"}, {121, ""},       {122, ""},       {123, "snapshot"}};

/// The signs of the keys without a fixed place on keyboards, and what some of them type in machine mode.
const std::map<int, char> SIGNS = {{186, ':'},    {187, ';'},    {188, ','},    {189, '-'},   {190, '.'}, {191, '/'},
                                   {192, '@'},    {219, '['},    {220, '\\'},   {221, ']'},   {222, '^'}, {226, '\x98'},
                                   {135, '\x87'}, {141, '\x8D'}, {118, '\x8D'}, {119, '\x87'}};
const std::map<int, char> MACHINE_SIGNS = {{188, ' '}, {189, '-'},    {190, '='},   {191, '\x8D'},
                                           {222, '^'}, {118, '\x8D'}, {119, '\x87'}};

/// What a key types alone, but for editing keys: itself, a sign, or the keypad's character, 64 below its number.
std::string typed_alone(int key, bool ascii_mode) {
    const std::map<int, char>& signs = ascii_mode ? SIGNS : MACHINE_SIGNS;
    if (signs.contains(key))
        return {signs.at(key)};
    if (key >= 96 && key <= 105)
        return {static_cast<char>(key - 96 + '0')};
    if (key >= 106 && key <= 111 && key != 108)
        return {static_cast<char>(key - 64)};
    return key >= 32 && key <= 127 && !ACTS.contains(key) ? std::string(1, static_cast<char>(key)) : "";
}

bool is_editing_key(int key) { return key == 8 || (key >= 35 && key <= 40) || key == 45 || key == 46; }

/// Editing keys: transcripts/dialogues.drv.
TEST(KeyMap, EveryVirtualKey) {
    for (const bool ascii_mode : {false, true}) {
        for (int key = -1; key <= 300; ++key) {
            SCOPED_TRACE(std::to_string(key) + " in mode " + std::to_string(ascii_mode));
            if (is_editing_key(key))
                continue;
            KeyMachine t(ascii_mode);
            const std::string text = typed_alone(key, ascii_mode);
            EXPECT_EQ(t.typed(key), text);
            EXPECT_EQ(t.m.keys.held_key, text.empty() || key == 187 ? 0 : key);
            EXPECT_EQ(t.log, ACTS.contains(key) ? ACTS.at(key) : "");
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

/// The keyboard is bit-paired: Shift flips one bit of a character.
TEST(KeyMap, ShiftTypesWhatJapaneseKeyboardsHaveAboveTheKey) {
    KeyMachine t(true);
    for (int key = '1'; key <= 226; ++key) {
        const bool is_printed = (key <= '9' && key >= '1') || (key >= 'A' && key <= 'Z') ||
                                (key >= 97 && key <= 111 && key != 108) || key >= 186;
        const std::string alone = typed_alone(key, true);
        if (!is_printed || alone.empty())
            continue;
        const int c = as_byte(alone[0]);
        std::string shifted(1, static_cast<char>(c ^ (c < 0x40 ? 0x10 : 0x20)));
        if (const std::map<int, const char*> odd{{106, ">"}, {107, "\x83"}, {226, "_"}}; odd.contains(key))
            shifted = odd.at(key);
        EXPECT_EQ(t.typed(key, 1), shifted) << key;
        EXPECT_EQ(t.typed(key, 2), key == 'C' ? "\x0B" : key == 'V' ? "\x0A" : "") << "with Ctrl: " << key;
        EXPECT_EQ(t.typed(key, 3) + t.typed(key, 4), "") << key;
    }
    EXPECT_EQ(t.typed('0', 1) + t.typed(96, 1), "");
}

/// The soft keyboard has the same keys: its S layer is Shift, EXT is Ctrl, both together are both, and F is Alt.
TEST(KeyMap, MachineModeIsTheSoftKeyboard) {
    const int layers[] = {soft_layer(0, 0, 0), soft_layer(1, 0, 0), soft_layer(0, 0, 1), soft_layer(1, 0, 1),
                          soft_layer(0, 1, 0)};
    int letters = 0;
    KeyMachine t(false);
    for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
        const char c = soft_key(0, index).text[0];
        if (soft_key(0, index).kind != SoftKeyKind::CHARACTER || as_byte(c) < ' ')
            continue;
        if (c >= '0' && c <= '9') { // digits choose areas here, and have no row there
            const SoftKey& area = soft_key(layers[1], index);
            EXPECT_TRUE(c == '9' || (area.kind == SoftKeyKind::AREA && area.text[0] == c - '0')) << c;
            continue;
        }
        const std::map<char, int> places = {{'/', 111}, {'*', 106}, {'-', 109},   {'+', 107},
                                            {'.', 110}, {'=', 190}, {'\x8D', 191}};
        const int key = places.contains(c) ? places.at(c) : c;
        letters += c >= 'A' && c <= 'Z' ? 1 : 0;
        for (const int modifiers : {0, 1, 2, 3, 4}) {
            if (modifiers < 2 || !places.contains(c)) {
                const std::string soft = soft_key(layers[modifiers], index).text.data();
                EXPECT_EQ(t.typed(key, modifiers), soft == "RAN# " ? "RAN#" : soft) << c << modifiers;
            }
        }
        EXPECT_EQ(t.typed(key, 5), t.typed(key, 4)) << "Shift and Alt: as Alt";
        EXPECT_EQ(t.typed(key, 6) + t.typed(key, 7), t.typed(key, 0) + t.typed(key, 0)) << "Ctrl and Alt: as alone";
    }
    EXPECT_EQ(letters, 26);
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
