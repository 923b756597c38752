// SPDX-License-Identifier: MIT
// The soft keyboard at work: what a press, holding and a release do, tick by tick. What every key does is tested
// through the driving protocol.
#include "core/charset.h"
#include "core/controls.h"
#include "keys/soft_keyboard.h"

#include "keys/soft_keys.h"
#include "shell/commands.h"
#include "tests/support/cases_file.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>
#include <utility>

namespace quillon::testing {
namespace {

using Place = std::pair<int, int>; // row, column
const std::map<std::string, Place> KEYS = {
    {"CLOSE", {0, 0}}, {"EXT", {0, 1}}, {"LEFT", {0, 2}}, {"S", {0, 4}}, {"F", {0, 5}},  {"CLEAR", {0, 6}},
    {"DEL", {0, 7}},   {"BRK", {0, 8}}, {"A", {2, 0}},    {"B", {3, 4}}, {"3", {2, 12}}, {"EXE", {3, 12}},
};

struct SoftKeyboard : TestMachine {
    SoftKeyboard() {
        load("[P0]\n10 GOTO 10\n[P3]\n10 A=3\n");
        open_soft_keyboard(m);
    }
    void down(Place key) { soft_mouse_down(m, key.first, key.second); }
    void up() { soft_mouse_up(m); }

    /// Press, a tick, release, two ticks.
    void click(Place key) {
        down(key);
        tick();
        up();
        tick(2);
    }

    /// A script of soft_keys.txt.
    void keys(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            if (word == "-")
                up();
            else if (KEYS.contains(word))
                click(KEYS.at(word));
            else if (word.ends_with('+'))
                down(KEYS.at(word.substr(0, word.size() - 1)));
            else
                tick(std::stoi(word));
        }
    }

    void enter_command_mode() {
        run_host_command(*simulator, COMMAND_LINE);
        exe();
        tick();
        ASSERT_EQ(m.run.run_state, STATE_COMMAND);
    }
    [[nodiscard]] std::string entry() const { return std::string(m.entry.entry_line.text); }
    /// Whether the keyboard looks other than at the last question.
    bool redrawn() {
        const std::pair now(current_soft_layer(m), m.soft.soft_highlight);
        return std::exchange(drawn, now) != now;
    }

    std::pair<int, int> drawn{0, -1}; ///< the layer and the key shown pressed
};

std::string latches_after(const FileCase& row) {
    SoftKeyboard t;
    t.keys(row.input);
    std::string on = t.m.keys.shift_flag ? "S" : "";
    on += t.m.keys.alt_flag ? "F" : "";
    on += t.m.keys.ctrl_flag ? "X" : "";
    t.redrawn();
    t.tick();
    EXPECT_FALSE(t.redrawn()) << "nothing has changed";
    return on + (on.empty() ? "" : " ") + std::to_string(current_soft_layer(t.m));
}

std::string typed_by(const FileCase& row) {
    SoftKeyboard t;
    t.enter_command_mode();
    t.keys(row.input);
    if (t.m.run.run_state != STATE_COMMAND)
        return moment(t);
    const std::string entry = t.entry().insert(static_cast<std::size_t>(t.m.screen.display_cursor), "|");
    return entry + (t.m.soft.soft_shift_latch ? " S" : "");
}

TEST(SoftKeyboard, TypesAndLatches) {
    expect_cases("keys/soft_keys.txt", {{"latches", latches_after}, {"typing", typed_by}});
}

TEST(SoftKeyboard, HoldsAKeyFromItsPressToItsRelease) {
    using Row = std::tuple<Place, const char*, int>;
    for (const auto& [place, text, highlight] :
         {Row{Place{2, 0}, "A", 28}, {{0, 6}, "\x06", 6}, {{3, 13}, "", SOFT_EXE_KEY}}) {
        SoftKeyboard t;
        t.tick();
        t.down(place);
        EXPECT_FALSE(t.redrawn()) << "nothing before the tick";
        for (const bool first : {true, false}) {
            soft_keyboard_tick(t.m);
            EXPECT_EQ(t.m.keys.key_string.view(), text);
            EXPECT_EQ(t.m.soft.soft_key_code, text[0]);
            EXPECT_EQ(t.m.soft.soft_highlight, highlight);
            EXPECT_EQ(t.m.keys.enter_request, *text == 0 && first ? 1 : 0) << "EXE comes once";
            EXPECT_EQ(t.redrawn(), first);
            t.m.keys.enter_request = false;
        }
        t.up();
        EXPECT_EQ(t.m.soft.soft_key_code, text[0]) << "nothing before the tick";
        soft_keyboard_tick(t.m);
        EXPECT_EQ(t.m.soft.soft_key_code, 0);
        EXPECT_TRUE(t.m.keys.key_string.empty());
        EXPECT_EQ(t.m.soft.soft_highlight, -1);
        EXPECT_TRUE(t.redrawn());
    }
}

/// Where a person is asked, the first key only opens the entry; it is typed with the tick behind that.
TEST(SoftKeyboard, TypesTheKeyThatBeginsAnEntry) {
    SoftKeyboard t;
    t.start("INPUT A$");
    t.wait();
    t.keys("A A B EXE");
    EXPECT_EQ(t.m.variables[0].text.view(), "AAB");

    SoftKeyboard ready;
    ready.keys("S 3");
    EXPECT_EQ(ready.m.settings.run_page, 3);
    ready.tick(20);
    EXPECT_EQ(moment(ready), "run 17 8 [READY P3]") << "the area's key is none to the prompt";
    ready.keys("A");
    EXPECT_EQ(ready.entry(), "A");
}

TEST(SoftKeyboard, ShowsKeysToKeyOnlyWhileTheyAreHeld) {
    SoftKeyboard t;
    t.start("A$=KEY$\nB$=KEY$\nC$=KEY$\nD$=KEY$\nEND");
    t.keys("A+ 1 2 - 2");
    std::string seen;
    for (std::size_t i = 0; i < 4; ++i)
        seen += std::string(t.m.variables[i].text) + ",";
    EXPECT_EQ(seen, "A,A,A,,");
}

TEST(SoftKeyboard, BreaksOnceAndOnlyWhatRuns) {
    for (int number = 0; number <= number_of(STATE_TO_COMMAND); ++number) {
        const auto state = static_cast<RunState>(number);
        SoftKeyboard t;
        std::string commands;
        t.simulator->around.host.run_command = [&commands](int command) { commands += std::to_string(command); };
        t.m.run.run_state = state;
        t.m.keys.key_string = "A";
        t.keys("BRK+");
        for (int tick = 0; tick < 30; ++tick)
            soft_keyboard_tick(t.m);
        EXPECT_EQ(commands, state == STATE_COMMAND ? "" : "40004") << number;
        EXPECT_TRUE(t.m.keys.key_string.empty());
    }
}

TEST(SoftKeyboard, LeavesNothingBehindWhenItIsClosed) {
    for (const bool by_its_key : {true, false}) {
        SCOPED_TRACE(by_its_key);
        SoftKeyboard t;
        t.enter_command_mode();
        t.keys(by_its_key ? "EXT CLOSE+ 5" : "EXT A+ 5");
        EXPECT_EQ(t.m.soft.soft_open, 1) << "it closes on the release";
        t.up();
        if (!by_its_key)
            run_host_command(*t.simulator, COMMAND_SOFT_KEYBOARD);
        t.tick(30);
        EXPECT_EQ(t.m.soft.soft_open + t.m.soft.soft_ctrl_latch + t.m.keys.ctrl_flag + t.m.soft.soft_key_code, 0);
        EXPECT_TRUE(t.m.keys.key_string.empty());
        t.keys("A"); // closed, it takes nothing
        open_soft_keyboard(t.m);
        t.tick(3);
        EXPECT_EQ(t.m.soft.soft_highlight, -1);
        EXPECT_EQ(t.entry(), by_its_key ? "" : "a");
    }
}

TEST(SoftKeyboard, IgnoresPressesOutsideItsGrid) {
    SoftKeyboard t;
    t.enter_command_mode();
    for (const auto& [row, column] : {Place{-1, 0}, {0, -1}, {4, 0}, {0, 14}, {4, -14}, {2, 28}, {-1, 14}}) {
        t.click({row, column});
        EXPECT_EQ(t.entry(), "") << row << ' ' << column;
        EXPECT_EQ(t.m.soft.soft_highlight, -1);
    }
    for (const auto& [layer, index] : {std::pair{-1, 0}, {6, 0}, {0, -1}, {0, 56}})
        EXPECT_EQ(soft_key(layer, index).kind, SoftKeyKind::NONE) << layer << ' ' << index;
}

TEST(SoftKeys, HaveLegendsAndNames) {
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
            const SoftKey& key = soft_key(layer, index);
            EXPECT_FALSE(soft_key_legend(key).empty() || soft_key_name(key).empty()) << layer << " " << index;
            for (const char c : soft_key_legend(key) + soft_key_name(key))
                EXPECT_TRUE(as_byte(c) >= ' ') << layer << " " << index;
        }
    }
    const auto label = [](int layer, int index) {
        return soft_key_legend(soft_key(layer, index)) + "|" + soft_key_name(soft_key(layer, index));
    };
    EXPECT_EQ(label(0, 2), "←|Cursor left");
    EXPECT_EQ(label(0, 6), "AC|Clear");
    EXPECT_EQ(label(0, 14), "Q|Q");
    EXPECT_EQ(label(1, 10), "P7|Program area 7");
    EXPECT_EQ(label(1, 28), "GOSUB|GOSUB");
    EXPECT_EQ(label(1, 51), "π|pi");
}

} // namespace
} // namespace quillon::testing
