// Keys of a terminal: what the machine gets, and for how long a key counts as down.
#include "tests/support/test_machine.h"

#include "terminal/lcd_cells.h"
#include "terminal/play_keys.h"

#include "core/charset.h"
#include "shell/skins.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr bool ASCII = true;
constexpr bool MACHINE_KEYBOARD = false;

/// What a key types in command mode, with special characters as their escapes.
std::string typed(const TypedKey& key, KeyLevel level, bool ascii_mode) {
    TestMachine t;
    t.m.ascii_mode = ascii_mode ? 1 : 0;
    t.m.run_state = STATE_COMMAND;
    Typist typist;
    if (const auto event = key_event_for(key, level, ascii_mode))
        type_key(typist, *event);
    for (int i = 0; i < 3; ++i)
        tick_with_keys(typist, *t.simulator);
    std::string text(t.m.entry_line.text.view());
    char escaped[64];
    return escape_text(text, escaped, sizeof escaped);
}

TEST(PlayKeys, TypeWhatTheLevelSays) {
    const struct {
        const char* character;
        KeyLevel level;
        bool ascii_mode;
        const char* expected;
    } rows[] = {
        {"a", LEVEL_NONE, ASCII, "A"},
        {"A", LEVEL_NONE, ASCII, "a"},
        {"a", LEVEL_SHIFT, ASCII, "a"},
        {"\"", LEVEL_NONE, ASCII, "\""},
        {"\u03c0", LEVEL_NONE, ASCII, "\\pi"},
        {"\u20ac", LEVEL_NONE, ASCII, ""}, // the machine has no such character
        {"?", LEVEL_NONE, ASCII, "?"},
        {"a", LEVEL_ALT, ASCII, ""},
        {"a", LEVEL_NONE, MACHINE_KEYBOARD, "A"},
        {"A", LEVEL_NONE, MACHINE_KEYBOARD, "GOSUB "},
        {"a", LEVEL_SHIFT, MACHINE_KEYBOARD, "GOSUB "},
        {"a", LEVEL_CTRL, MACHINE_KEYBOARD, "a"},
        {"q", LEVEL_SHIFT_CTRL, MACHINE_KEYBOARD, "%"},
        {"a", LEVEL_ALT, MACHINE_KEYBOARD, "SIN "},
        {"=", LEVEL_SHIFT, MACHINE_KEYBOARD, "\\ne"},
        {"+", LEVEL_NONE, MACHINE_KEYBOARD, "+"},
        {"\"", LEVEL_NONE, MACHINE_KEYBOARD, "\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.character) + ' ' + std::string(level_name(row.level)));
        EXPECT_EQ(typed({.character = row.character}, row.level, row.ascii_mode), row.expected);
    }
    EXPECT_EQ(typed({.character = "a", .alt = true}, LEVEL_NONE, MACHINE_KEYBOARD), "SIN ");
    EXPECT_EQ(typed({.virtual_key = 119}, LEVEL_NONE, ASCII), "\\pi"); // F8
}

TEST(PlayKeys, AreDownUntilUsed) {
    TestMachine t;
    t.start("A=0:B=0:C=0:K$=KEY$:L$=KEY$:M$=KEY$");
    Typist typist;
    for (const char* character : {"x", "x"})
        type_key(typist, *key_event_for({.character = character}, LEVEL_NONE, ASCII));
    for (int i = 0; i < 6; ++i)
        tick_with_keys(typist, *t.simulator);
    // The first is held until the fourth statement reads it; between two equal keys there is a tick without any.
    EXPECT_EQ(t.m.variables['K' - 'A'].text.view(), "X");
    EXPECT_EQ(t.m.variables['L' - 'A'].text.view(), "");
    EXPECT_EQ(t.m.variables['M' - 'A'].text.view(), "X");
}

/// A key that the program never reads comes up, so that those behind it get their turn.
TEST(PlayKeys, ComeUpAfterASecond) {
    TestMachine t;
    t.start("GOTO 10");
    t.m.timer_interval = 100;
    Typist typist;
    type_key(typist, *key_event_for({.character = "x"}, LEVEL_NONE, ASCII));
    for (int i = 0; i < 9; ++i)
        tick_with_keys(typist, *t.simulator);
    EXPECT_TRUE(typist.down);
    tick_with_keys(typist, *t.simulator);
    EXPECT_FALSE(typist.down);
}

/// Typed at once: an entry, EXE, and the next entry.
TEST(PlayKeys, KeepTheirOrder) {
    TestMachine t;
    t.start("INPUT A,B\nGOTO 20");
    t.tick(3);
    Typist typist;
    for (const char c : std::string("12\r34\r")) {
        const TypedKey key = c == '\r' ? TypedKey{.virtual_key = 13} : TypedKey{.character = std::string(1, c)};
        type_key(typist, *key_event_for(key, LEVEL_NONE, ASCII));
    }
    for (int i = 0; i < 40; ++i)
        tick_with_keys(typist, *t.simulator);
    EXPECT_EQ(t.m.variables[0].number, 12);
    EXPECT_EQ(t.m.variables[1].number, 34);
}

TEST(LcdCells, ShowDotsAndText) {
    TestMachine t;
    ASSERT_TRUE(load_skin(*t.simulator, {}));
    t.start(R"(PRINT "1\pi")");
    t.wait();
    render_lcd(t.simulator->lcd, t.m);
    std::string dots;
    for (int row = 0; row < LCD_DOT_ROWS; ++row) {
        for (int column = -1; column < 6; ++column)
            dots += lcd_dot(t.simulator->lcd, column, row) ? '#' : '.';
        dots += '\n';
    }
    EXPECT_EQ(dots, "...#...\n..##...\n...#...\n...#...\n...#...\n...#...\n..###..\n");
    EXPECT_EQ(lcd_block_rows(t.simulator->lcd)[0].substr(0, 9), " \u2584\u2588  ");
    EXPECT_EQ(lcd_text(t.simulator->lcd, true), "1\u03c0          ");
    EXPECT_EQ(lcd_text(t.simulator->lcd, false), "1?          ");
}

} // namespace
} // namespace quillon::testing
