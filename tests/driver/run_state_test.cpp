// The run states, and what moves the machine from one to the next. States whose entry is typed are in their own tests.
#include "tests/support/cases_file.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(RunStates, PassFromOneToTheNext) {
    expect_cases("driver/run_states.txt", [](const FileCase& row) {
        TestMachine t;
        t.start(row.heading);
        play(t, row.input);
        return moment(t) + " from " + std::to_string(t.m.prev_state) + ", base " + std::to_string(t.m.base_state);
    });
}

TEST(RunStates, RunOneStatementATick) {
    TestMachine t;
    t.start("A=1:B=2:C=3\nD=4");
    for (std::size_t done = 0; done <= 4; ++done) {
        for (std::size_t cell = 0; cell < 4; ++cell)
            EXPECT_EQ(t.m.variables[cell].kind, cell < done ? 0 : -1) << done << " ticks, cell " << cell;
        t.tick();
    }
    EXPECT_EQ(t.m.run_state, STATE_ENDED);
}

TEST(RunStates, KeepThePlaceOfTheErrorAndTheVariables) {
    TestMachine t;
    t.start("FOR I=1 TO 2:GOSUB 30\nEND\nA=7:B=\"X\"");
    t.tick(4);
    EXPECT_EQ(moment(t), "ended 0 10 [ERR2 P0-30]");
    EXPECT_EQ(t.m.cur_line, 2);
    EXPECT_EQ(t.m.for_depth, 1);
    EXPECT_EQ(t.m.gosub_depth, 1);
    EXPECT_EQ(t.m.variables[0].number, 7);
    EXPECT_EQ(t.m.variables[1].kind, -1);
}

TEST(RunStates, ShowTheAreasForSelection) {
    TestMachine t;
    t.load("[P0]\n10 A=1\n[P3]\n10 A=3\n[P7]\n");
    t.tick();
    EXPECT_EQ(t.visible(), "P  12_456_89") << "the selected one is dark first; an area without lines is in use too";
    t.m.cursor_visible = 1;
    t.tick();
    EXPECT_EQ(t.visible(), "P _12_456_89");
    t.m.cursor_visible = 0;
    t.m.host.is_key_down = [](int) { return true; }; // so that only the selection takes the key
    t.m.key_string = "9";
    t.m.held_key = '9';
    t.tick();
    EXPECT_EQ(t.m.run_page, 9);
    EXPECT_TRUE(t.m.key_string.empty());
    EXPECT_EQ(t.m.held_key, 0);
    EXPECT_EQ(t.visible(), "P _12_456_8 ");
    for (const char* key : {"a", ":", "/", "\x06", "\xB9"}) {
        play(t, key);
        EXPECT_EQ(t.m.run_page, 9) << key;
    }
    t.exe();
    EXPECT_EQ(t.m.run_state, STATE_SELECT);
    t.m.run_page = 3;
    play(t, "run 1");
    EXPECT_EQ(t.m.variables[0].number, 3);
}

TEST(RunStates, RunOffTheEndOfAFullArea) {
    std::string lines;
    for (int i = 0; i < LINES_PER_AREA; ++i)
        lines += "A=A+1\n";
    TestMachine t;
    t.start(lines);
    t.tick(LINES_PER_AREA);
    EXPECT_EQ(t.m.run_state, STATE_RUN);
    t.tick();
    EXPECT_EQ(t.m.run_state, STATE_ENDED);
    EXPECT_EQ(t.m.program_ended, 0);
    EXPECT_EQ(t.m.variables[0].number, LINES_PER_AREA);
}

} // namespace
} // namespace quillon::testing
