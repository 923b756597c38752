// SPDX-License-Identifier: MIT
// A tick: the run states and what moves the machine from one to the next; and what every tick does around them: tone,
// blinking, error hold, keys, single steps. States whose entry is typed are in their own tests.
#include "core/controls.h"
#include "core/errors.h"
#include "tests/support/cases_file.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

class Tick : public ::testing::Test {
protected:
    TestMachine t;
};

TEST(Ticks, PassFromStateToState) {
    expect_cases("driver/run_states.txt", [](const FileCase& row) {
        TestMachine t;
        t.start(row.heading);
        play(t, row.input);
        return moment(t) + " from " + std::to_string(number_of(t.m.run.prev_state)) + ", base " +
               std::to_string(number_of(t.m.run.base_state));
    });
}

TEST_F(Tick, RunOneStatementATick) {
    t.start("A=1:B=2:C=3\nD=4");
    for (std::size_t done = 0; done <= 4; ++done) {
        for (std::size_t cell = 0; cell < 4; ++cell)
            EXPECT_EQ(t.m.variables[cell].kind, cell < done ? CELL_NUMBER : CELL_UNASSIGNED)
                << done << " ticks, cell " << cell;
        t.tick();
    }
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
}

TEST_F(Tick, ShowTheAreasForSelection) {
    t.load("[P0]\n10 A=1\n[P3]\n10 A=3\n[P7]\n");
    t.tick();
    EXPECT_EQ(t.visible(), "P  12_456_89") << "the selected one is dark first; an area without lines is in use too";
    t.m.screen.cursor_visible = true;
    t.tick();
    EXPECT_EQ(t.visible(), "P _12_456_89");
    t.m.screen.cursor_visible = false;
    t.simulator->around.host.is_key_down = [](int) { return true; }; // so that only the selection takes the key
    t.m.keys.key_string = "9";
    t.m.keys.held_key = '9';
    t.tick();
    EXPECT_EQ(t.m.settings.run_page, 9);
    EXPECT_TRUE(t.m.keys.key_string.empty());
    EXPECT_EQ(t.m.keys.held_key, 0);
    EXPECT_EQ(t.visible(), "P _12_456_8 ");
    for (const char* key : {"a", ":", "/", "\x06", "\xB9"}) {
        play(t, key);
        EXPECT_EQ(t.m.settings.run_page, 9) << key;
    }
    t.exe();
    EXPECT_EQ(t.m.run.run_state, STATE_SELECT);
    t.m.settings.run_page = 3;
    play(t, "run 1");
    EXPECT_EQ(cell(t, 'A').number, 3);
}

TEST_F(Tick, RunOffTheEndOfAFullArea) {
    std::string lines;
    for (int i = 0; i < LINES_PER_AREA; ++i)
        lines += "A=A+1\n";
    t.start(lines);
    t.tick(LINES_PER_AREA);
    EXPECT_EQ(t.m.run.run_state, STATE_RUN);
    t.tick();
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
    EXPECT_EQ(t.m.run.program_ended, 0);
    EXPECT_EQ(cell(t, 'A').number, LINES_PER_AREA);
}

TEST(Ticks, BlinksEveryIntervalAndTwoMore) {
    for (const int interval : {0, 1, 13, 1000}) {
        SCOPED_TRACE(interval);
        TestMachine t;
        t.m.settings.cursor_interval = interval;
        for (const int phase : {1, 0, 1}) {
            t.tick(interval + 1);
            EXPECT_EQ(t.m.screen.cursor_visible, 1 - phase);
            t.tick();
            EXPECT_EQ(t.m.screen.cursor_visible, phase);
            EXPECT_EQ(t.m.screen.blink_counter, 0);
        }
    }
}

TEST_F(Tick, StopsNoToneThatWasNeverPlayed) {
    bool stopped = false;
    t.simulator->around.host.stop_tone = [&stopped] { stopped = true; };
    t.m.settings.pcm_beep = false;
    t.m.sound.tone.samples = 100;
    t.m.sound.sound_ticks_left = 3;
    t.tick(5);
    EXPECT_FALSE(stopped);
    EXPECT_EQ(t.m.sound.sound_ticks_left, 0);
}

TEST_F(Tick, HoldsEverythingWhileAToneIsWaitedFor) {
    t.start("PRINT 1\nA=2");
    t.tick();
    t.m.sound.sound_ticks_left = 3;
    t.m.sound.sound_holds_run = true;
    t.m.keys.enter_request = true;
    t.m.keys.held_key = 'Q';
    const int blink = t.m.screen.blink_counter;
    t.tick(2);
    EXPECT_EQ(moment(t), "wait 0 2 [ 1]");
    EXPECT_EQ(t.m.keys.enter_request, 1) << "EXE counts after the tone";
    EXPECT_EQ(t.m.keys.held_key, 'Q');
    EXPECT_EQ(t.m.screen.blink_counter, blink);
    t.tick();
    EXPECT_EQ(t.m.sound.sound_holds_run, 0);
    EXPECT_EQ(moment(t), "run 0 0 []") << "the tick in which the tone ends goes on";
    t.m.sound.sound_ticks_left = 5; // one that nothing waits for
    t.exe();
    EXPECT_EQ(cell(t, 'A').number, 2);
    EXPECT_EQ(t.m.sound.sound_ticks_left, 4);
    EXPECT_FALSE(t.m.keys.enter_request) << "EXE that nothing waited for is forgotten";
}

TEST_F(Tick, GoesOnBlinkingWhileAnErrorHolds) {
    t.start("A=1/0");
    t.m.sound.sound_ticks_left = 100;
    t.tick(8);
    t.m.soft.soft_key_code = number_of(KEY_UP);
    t.tick();
    EXPECT_EQ(moment(t), "ended 0 10 [ERR3 P0-10]");
    EXPECT_EQ(t.m.screen.blink_counter, 9);
    EXPECT_EQ(t.m.sound.sound_ticks_left, 91) << "a tone ends all the same";
    t.m.keys.enter_request = true;
    play(t, "home");
    EXPECT_EQ(t.m.error.error_code, ERROR_NONE);
    EXPECT_FALSE(t.m.keys.enter_request);
    EXPECT_EQ(t.detail_id(), "SYSTEM 5") << "the detail stays for the host to show";
}

TEST_F(Tick, ForgetsAKeyThatIsUp) {
    bool down = true;
    t.simulator->around.host.is_key_down = [&down](int virtual_key) { return down && virtual_key == 'Q'; };
    t.m.keys.key_string = "q";
    t.m.keys.held_key = 'Q';
    t.tick(3);
    EXPECT_EQ(t.m.keys.key_string.view(), "q");
    down = false;
    t.tick();
    EXPECT_TRUE(t.m.keys.key_string.empty());
    EXPECT_EQ(t.m.keys.held_key, 0);
    t.m.keys.key_string = "w"; // put there by no key
    t.tick();
    EXPECT_EQ(t.m.keys.key_string.view(), "w");
}

TEST_F(Tick, StepsOneStatementForEachExeWhileTraced) {
    int refreshed = 0;
    t.simulator->around.host.refresh_trace = [&refreshed] { ++refreshed; };
    const auto done = [&] { // the statements that have run, and how often the trace was shown
        return std::to_string(cell(t, 'A').number + cell(t, 'B').number + cell(t, 'C').number).substr(0, 1) + " " +
               std::to_string(refreshed);
    };
    t.start("A=1:B=1\nC=1");
    t.m.trace.trace_mode = true;
    t.tick(3);
    EXPECT_EQ(done(), "0 1") << "once for the statement that waits";
    t.exe();
    t.tick(3);
    EXPECT_EQ(done(), "1 2");
    t.m.trace.trace_step_request = true;
    t.tick();
    EXPECT_EQ(t.m.trace.trace_step_request, 0);
    t.exe();
    EXPECT_EQ(done(), "3 3") << "a statement that is stepped over at once is shown too";
    t.tick();
    EXPECT_EQ(t.m.run.run_state, STATE_RUN) << "the end of the program is a step too";
    t.exe();
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
    t.start("D=1");
    t.m.run.base_state = STATE_COMMAND;
    t.tick();
    EXPECT_EQ(cell(t, 'D').number, 1) << "a command line runs without steps";
}

} // namespace
} // namespace quillon::testing
