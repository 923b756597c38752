// The soft keyboard at work: what a press, holding and a release do, tick by tick. What every key does is tested
// through the driving protocol.
#include "keys/soft_keyboard.h"

#include "keys/soft_keys.h"
#include "shell/commands.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillon::testing {
namespace {

struct Place {
    int row, column;
};
constexpr Place CLOSE{0, 0}, EXT{0, 1}, LEFT{0, 2}, S{0, 4}, F{0, 5}, CLEAR{0, 6}, DEL{0, 7}, BRK{0, 8}, A{2, 0},
    B{3, 4}, THREE{2, 12}, EXE{3, 12};

struct SoftKeyboard : TestMachine {
    SoftKeyboard() {
        load("[P0]\n10 GOTO 10\n[P3]\n10 A=3\n");
        open_soft_keyboard(m);
        m.soft_changed = 0;
    }
    void down(Place key) { soft_mouse_down(m, key.row, key.column); }
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
        ASSERT_EQ(m.run_state, STATE_COMMAND);
    }
    [[nodiscard]] std::string entry() const { return std::string(m.entry_line.text); }
    /// Whether redrawing was asked for since the last question.
    bool redrawn() { return std::exchange(m.soft_changed, 0) != 0; }
};

TEST(SoftKeyboard, KeepsLatchesAsItShould) {
    // clang-format off
    const std::pair<char, Place> keys[] = {{'S', S}, {'F', F}, {'X', EXT}, {'A', A}, {'<', LEFT}, {'B', BRK}, {'C', CLEAR},
                                           {'E', EXE}, {'3', THREE}};
    // clang-format on
    struct Row {
        const char* keys;
        const char* latches; ///< those that are on; X is EXT
        int layer;
    };
    // clang-format off
    const Row rows[] = {
        {"S", "S", 1},   {"SS", "", 0},    {"FF", "", 0},   {"SF", "F", 2},  {"FS", "S", 1},  {"XX", "", 0},
        {"XS", "SX", 4}, {"XSF", "FX", 5}, {"XFF", "X", 3}, {"SX", "X", 3},  {"XFX", "", 0},
        // S and F are for one key, EXT stays
        {"SA", "", 0},   {"F<", "", 0},    {"XAA", "X", 3}, {"XFA", "X", 3}, {"SC", "", 0},
        {"XSE", "X", 3}, {"FB", "", 0},    {"XS3", "X", 3},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keys);
        SoftKeyboard t;
        for (const char wanted : std::string_view(row.keys))
            for (const auto& [name, key] : keys)
                if (name == wanted)
                    t.click(key);
        std::string on = t.m.shift_flag != 0 ? "S" : ""; // as the LCD shows them
        on += t.m.alt_flag != 0 ? "F" : "";
        EXPECT_EQ(on + (t.m.ctrl_flag != 0 ? "X" : ""), row.latches);
        EXPECT_EQ(current_soft_layer(t.m), row.layer);
        EXPECT_TRUE(t.redrawn());
        t.tick();
        EXPECT_FALSE(t.redrawn()) << "nothing has changed";
    }
}

TEST(SoftKeyboard, HoldsAKeyFromItsPressToItsRelease) {
    struct Row {
        Place key;
        const char* text;
        int highlight;
    };
    for (const Row& row : {Row{A, "A", 28}, {CLEAR, "\x06", 6}, {{3, 13}, "", SOFT_EXE_KEY}}) {
        SoftKeyboard t;
        t.tick();
        t.down(row.key);
        EXPECT_FALSE(t.redrawn()) << "nothing before the tick";
        for (const bool first : {true, false}) {
            soft_keyboard_tick(t.m);
            EXPECT_EQ(t.m.key_string.view(), row.text);
            EXPECT_EQ(t.m.soft_key_code, row.text[0]);
            EXPECT_EQ(t.m.soft_highlight, row.highlight);
            EXPECT_EQ(t.m.enter_request, *row.text == 0 && first ? 1 : 0) << "EXE comes once";
            EXPECT_EQ(t.redrawn(), first);
            t.m.enter_request = 0;
        }
        t.up();
        EXPECT_EQ(t.m.soft_key_code, row.text[0]) << "nothing before the tick";
        soft_keyboard_tick(t.m);
        EXPECT_EQ(t.m.soft_key_code, 0);
        EXPECT_TRUE(t.m.key_string.empty());
        EXPECT_EQ(t.m.soft_highlight, -1);
        EXPECT_TRUE(t.redrawn());
    }
}

TEST(SoftKeyboard, RepeatsAHeldCharacterFromTheTenthTickOnEveryOther) {
    SoftKeyboard t;
    t.enter_command_mode();
    t.down(A);
    t.tick();
    for (int tick = 0; tick <= 20; ++tick) {
        const int repeats = tick < 10 ? 0 : 1 + (tick - 10) / 2;
        EXPECT_EQ(t.entry(), std::string(1U + static_cast<std::size_t>(repeats), 'A')) << tick;
        t.tick();
    }
    t.up();
    t.tick(5);
    EXPECT_EQ(t.entry(), "AAAAAAA");
    t.down(LEFT); // control codes repeat as well
    t.tick(13);
    t.up();
    t.tick();
    EXPECT_EQ(t.m.display_cursor, 4);
    t.down(B); // and the count starts anew with each key
    t.tick(10);
    t.up();
    t.tick();
    EXPECT_EQ(t.entry(), "AAAABAA");
}

TEST(SoftKeyboard, DoesNotRepeatWordsAndOnceKeys) {
    SoftKeyboard t;
    t.enter_command_mode();
    t.click(S);
    t.down(A);
    t.tick(40);
    EXPECT_EQ(t.entry(), "GOSUB ");
    EXPECT_EQ(t.m.soft_shift_latch, 1) << "until the release";
    t.up();
    t.tick();
    EXPECT_EQ(t.m.soft_shift_latch, 0);
    t.m.display_cursor = 0;
    t.down(DEL);
    t.tick(40);
    EXPECT_EQ(t.entry(), "OSUB ");
}

TEST(SoftKeyboard, TypesWhatIsPressedAndReleasedBetweenTwoTicks) {
    SoftKeyboard t;
    t.enter_command_mode();
    for (const char* entry : {"A", "AA", "AAA"}) {
        t.down(A);
        t.up();
        t.tick();
        EXPECT_EQ(t.entry(), entry);
        t.tick(30);
        EXPECT_EQ(t.entry(), entry) << "it is not held";
        EXPECT_EQ(t.m.soft_key_code, 0);
    }
    for (const Place key : {S, EXE}) {
        t.down(key);
        t.up();
        t.tick(2);
        EXPECT_EQ(t.m.soft_held_kind, 0);
        EXPECT_EQ(t.m.soft_shift_latch, key.row == 0 ? 1 : 0);
    }
    EXPECT_EQ(t.m.history[0].view(), "AAA");
}

/// Where a person is asked, the first key only opens the entry; it is typed with the tick behind that.
TEST(SoftKeyboard, TypesTheKeyThatBeginsAnEntry) {
    SoftKeyboard t;
    t.start("INPUT A$");
    t.wait();
    for (const Place key : {A, A, B, EXE})
        t.click(key);
    EXPECT_EQ(t.m.variables[0].text.view(), "AAB");

    SoftKeyboard ready;
    ready.click(S);
    ready.click(THREE);
    EXPECT_EQ(ready.m.run_page, 3);
    ready.tick(20);
    EXPECT_EQ(moment(ready), "run 17 8 [READY P3]") << "the area's key is none to the prompt";
    ready.click(A);
    EXPECT_EQ(ready.entry(), "A");
}

TEST(SoftKeyboard, ShowsKeysToKeyOnlyWhileTheyAreHeld) {
    SoftKeyboard t;
    t.start("A$=KEY$\nB$=KEY$\nC$=KEY$\nD$=KEY$\nEND");
    t.down(A);
    t.tick(3);
    t.up();
    t.tick(2);
    std::string seen;
    for (std::size_t i = 0; i < 4; ++i)
        seen += std::string(t.m.variables[i].text) + ",";
    EXPECT_EQ(seen, "A,A,A,,");
}

TEST(SoftKeyboard, BreaksOnceAndOnlyWhatRuns) {
    for (int state = STATE_RUN; state <= STATE_TO_COMMAND; ++state) {
        SoftKeyboard t;
        std::string commands;
        t.m.host.run_command = [&commands](int command) { commands += std::to_string(command); };
        t.m.run_state = state;
        t.m.key_string = "A";
        t.down(BRK);
        for (int tick = 0; tick < 30; ++tick)
            soft_keyboard_tick(t.m);
        EXPECT_EQ(commands, state == STATE_COMMAND ? "" : "40004") << state;
        EXPECT_TRUE(t.m.key_string.empty());
    }
}

TEST(SoftKeyboard, LeavesNothingBehindWhenItIsClosed) {
    for (const bool by_its_key : {true, false}) {
        SCOPED_TRACE(by_its_key);
        SoftKeyboard t;
        t.enter_command_mode();
        t.click(EXT);
        t.down(by_its_key ? CLOSE : A);
        t.tick(5);
        EXPECT_EQ(t.m.soft_open, 1) << "it closes on the release";
        t.up();
        if (!by_its_key)
            run_host_command(*t.simulator, COMMAND_SOFT_KEYBOARD);
        t.tick(30);
        EXPECT_EQ(t.m.soft_open + t.m.soft_ctrl_latch + t.m.ctrl_flag + t.m.soft_key_code, 0);
        EXPECT_TRUE(t.m.key_string.empty());
        t.click(A); // closed, it takes nothing
        open_soft_keyboard(t.m);
        t.tick(3);
        EXPECT_EQ(t.m.soft_highlight, -1);
        EXPECT_EQ(t.entry(), by_its_key ? "" : "a");
    }
}

TEST(SoftKeyboard, IgnoresPressesOutsideItsGrid) {
    SoftKeyboard t;
    t.enter_command_mode();
    for (const Place place : {Place{-1, 0}, {0, -1}, {4, 0}, {0, 14}, {4, -14}, {2, 28}, {-1, 14}}) {
        t.click(place);
        EXPECT_EQ(t.entry(), "") << place.row << ' ' << place.column;
        EXPECT_EQ(t.m.soft_highlight, -1);
    }
    for (const auto& [layer, index] : {std::pair{-1, 0}, {6, 0}, {0, -1}, {0, 56}})
        EXPECT_EQ(soft_key(layer, index).kind, SoftKeyKind::NONE) << layer << ' ' << index;
}

} // namespace
} // namespace quillon::testing
