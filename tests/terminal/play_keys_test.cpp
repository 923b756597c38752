// SPDX-License-Identifier: MIT
// Keys of a terminal: what the machine gets (play_keys.txt), and for how long a key counts as down.
#include "tests/support/cases_file.h"
#include "tests/support/test_machine.h"

#include "terminal/lcd_cells.h"
#include "terminal/play_keys.h"
#include "terminal/wrapped_text.h"

#include "core/charset.h"
#include "shell/skins.h"

#include <gtest/gtest.h>

#include <clocale>
#include <tuple>

namespace quillon::testing {
namespace {

constexpr int VIRTUAL_KEY_OVERDRIVE = 114; // F3

/// What a key types in command mode, with special characters as their escapes.
std::string typed(const TypedKey& key, KeyLevel level, bool ascii_mode) {
    TestMachine t;
    t.m.settings.ascii_mode = ascii_mode ? 1 : 0;
    t.m.run.run_state = STATE_COMMAND;
    Typist typist;
    if (const auto event = key_event_for(key, level, ascii_mode))
        type_key(typist, *event);
    for (int i = 0; i < 3; ++i)
        tick_with_keys(typist, *t.simulator);
    std::string text(t.m.entry.entry_line.text.view());
    char escaped[64];
    return escape_text(text, escaped, sizeof escaped);
}

TEST(PlayKeys, TypeWhatTheLevelSays) {
    expect_cases("terminal/play_keys.txt", [](const FileCase& row) {
        const std::size_t blank = row.input.find(' ');
        KeyLevel level = LEVEL_NONE;
        while (level != LEVEL_ALT && level_name(level) != row.input.substr(blank + 1))
            level = next_level(level);
        return "|" + typed({.character = row.input.substr(0, blank)}, level, row.heading == "ASCII mode") + "|";
    });
    EXPECT_EQ(typed({.character = "a", .alt = true}, LEVEL_NONE, false), "SIN ");
    EXPECT_EQ(typed({.virtual_key = 119}, LEVEL_NONE, true), "\\pi"); // F8
}

/// A program and somebody who types; "\r" is Enter.
struct Playing : TestMachine {
    Typist typist;
    Playing(const char* program, std::string_view keys) {
        start(program);
        for (const char c : keys) {
            const TypedKey key = c == '\r' ? TypedKey{.virtual_key = 13} : TypedKey{.character = std::string(1, c)};
            type_key(typist, *key_event_for(key, LEVEL_NONE, true));
        }
    }
    void tick_with_keys(int count) {
        for (int i = 0; i < count; ++i)
            quillon::tick_with_keys(typist, *simulator);
    }
};

TEST(PlayKeys, AreDownUntilUsed) {
    Playing t("A=0:B=0:C=0:K$=KEY$:L$=KEY$:M$=KEY$", "xx");
    t.tick_with_keys(6);
    // The first is held until the fourth statement reads it; between two equal keys there is a tick without any.
    EXPECT_EQ(t.m.variables['K' - 'A'].text.view(), "X");
    EXPECT_EQ(t.m.variables['L' - 'A'].text.view(), "");
    EXPECT_EQ(t.m.variables['M' - 'A'].text.view(), "X");
}

/// A key that the program never reads comes up, so that those behind it get their turn.
TEST(PlayKeys, ComeUpAfterASecond) {
    Playing t("GOTO 10", "x");
    t.m.settings.timer_interval = 100;
    t.tick_with_keys(9);
    EXPECT_TRUE(t.typist.down);
    t.tick_with_keys(1);
    EXPECT_FALSE(t.typist.down);
}

/// Typed at once: an entry, EXE, and the next entry.
TEST(PlayKeys, KeepTheirOrder) {
    Playing t("INPUT A,B\nGOTO 20", "12\r34\r");
    t.tick_with_keys(45);
    EXPECT_EQ(t.m.variables[0].number * 100 + t.m.variables[1].number, 1234);
}

/// Pasted text waits, far more than anybody types ahead; what is too much is counted.
TEST(PlayKeys, WaitInGreatNumbers) {
    Playing t("INPUT A", std::string(70'000, 'x'));
    EXPECT_EQ(t.typist.waiting.size() + t.typist.dropped, 70'000U);
    EXPECT_GE(t.typist.waiting.size(), 50'000U);
    t.typist.waiting.resize(1);
    t.tick_with_keys(5);
    EXPECT_EQ(t.typist.dropped, 0U) << "all that waited have been used";
}

/// A tone takes no keys but those that act at once: they overtake.
TEST(PlayKeys, AreNotHeldUpByATone) {
    Playing t("BEEPS 4,9,10000:BEEPWAIT\nGOTO 20", "xy");
    t.tick_with_keys(3);
    type_key(t.typist, *key_event_for({.virtual_key = VIRTUAL_KEY_OVERDRIVE}, LEVEL_NONE, true));
    t.tick_with_keys(3);
    EXPECT_EQ(t.m.speed.overdrive, 1);
    EXPECT_NE(t.m.sound.sound_ticks_left, 0);
}

TEST(WrappedText, BreaksAtBlanksAndBesideWideCharacters) {
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    const std::tuple<const char*, int, std::vector<std::string>> rows[] = {
        {"", 5, {""}},
        {"one two three", 7, {"one two", "three"}},
        {"one two  three", 8, {"one two", "three"}},
        {"no abcdefghij", 4, {"no", "abcd", "efgh", "ij"}},
        {"日本語です", 5, {"日本", "語で", "す"}},
        {"日本語 ab", 1, {"日", "本", "語", "a", "b"}},
        {"a\xC3", 1, {"a", "\xC3"}},
    };
    for (const auto& [text, columns, lines] : rows)
        EXPECT_EQ(wrap_text(text, columns), lines) << text;
    std::setlocale(LC_CTYPE, "C");
}

TEST(LcdCells, ShowDotsAndText) {
    TestMachine t;
    ASSERT_TRUE(load_skin(*t.simulator, {}));
    t.start(R"(PRINT "1\pi")");
    t.wait();
    render_lcd(t.simulator->lcd, t.m);
    EXPECT_FALSE(lcd_dot(t.simulator->lcd, -1, 0));
    EXPECT_TRUE(lcd_dot(t.simulator->lcd, 1, 1));
    EXPECT_EQ(lcd_block_rows(t.simulator->lcd)[0].substr(0, 9), " \u2584\u2588  ");
    EXPECT_EQ(lcd_text(t.simulator->lcd, true), "1\u03c0          ");
    EXPECT_EQ(lcd_text(t.simulator->lcd, false), "1?          ");
}

} // namespace
} // namespace quillon::testing
