// SPDX-License-Identifier: MIT
// The soft keyboard: what its keys type, and what a press, holding and a release do to the record. Typing on it:
// transcripts/keys.drv.
#include "core/charset.h"
#include "core/controls.h"
#include "keys/soft_keyboard.h"

#include "keys/soft_keys.h"
#include "shell/commands.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace quillon::testing {
namespace {

using Place = std::pair<int, int>; // row, column
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

TEST(SoftKeyboard, BreaksOnceAndOnlyWhatRuns) {
    for (int number = 0; number <= number_of(STATE_TO_COMMAND); ++number) {
        const auto state = static_cast<RunState>(number);
        SoftKeyboard t;
        std::string commands;
        t.simulator->around.host.run_command = [&commands](int command) { commands += std::to_string(command); };
        t.m.run.run_state = state;
        t.m.keys.key_string = "A";
        t.down({0, 8}); // BRK
        for (int tick = 0; tick < 30; ++tick)
            soft_keyboard_tick(t.m);
        EXPECT_EQ(commands, state == STATE_COMMAND ? "" : "40004") << number;
        EXPECT_TRUE(t.m.keys.key_string.empty());
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
