// The run states, and what moves the machine from one to the next. States whose entry is typed are in their own tests.
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(RunStates, PassFromOneToTheNext) {
    struct Row {
        const char* program;
        const char* script;
        const char* moment;
        int prev_state;
        int base_state;
    };
    const Row rows[] = {
        // a program without output
        {"A=1", "1", "run 0 0 []", 5, 0},
        {"A=1", "2", "ended 0 0 []", 0, 0},
        {"A=1", "2 exe up a 5", "ended 0 0 []", 0, 0},
        {"A=1", "2 home", "command 16 0 []", 4, 6},
        {"A=1", "2 soft", "command 16 0 []", 4, 6},
        // the wait behind PRINT; at the end of the program it leads straight to command mode
        {R"(PRINT "AB")", "1", "wait 0 2 [AB]", 5, 0},
        {R"(PRINT "AB")", "1 100 home up a", "wait 0 2 [AB]", 5, 0},
        {R"(PRINT "AB")", "1 exe", "run 0 0 []", 1, 0},
        {R"(PRINT "AB")", "1 exe 1", "to-command 0 0 []", 0, 0},
        {R"(PRINT "AB")", "1 exe 2", "command 16 0 []", 9, 6},
        {R"(PRINT "AB";)", "2", "run 0 2 [AB]", 0, 0},
        {R"(PRINT "AB";)", "9", "ended 0 2 [AB]", 0, 0},
        {"PRINT \"AB\"\nPRINT \"C\";", "1 exe 9", "ended 0 1 [C]", 0, 0},
        // a text that scrolls ends a program as a short one does
        {R"(PRINT "ABCDEFGHIJKLM")", "1 exe", "wait 0 12 [BCDEFGHIJKLM]", 0, 0},
        {R"(PRINT "ABCDEFGHIJKLM")", "1 exe exe 1", "to-command 0 0 []", 0, 0},
        {R"(PRINT "ABCDEFGHIJKLM")", "1 exe exe 2", "command 16 0 []", 9, 6},
        {R"(PRINT "ABCDEFGHIJKLM";)", "1 exe 9", "run 7 12 [BCDEFGHIJKLM]", 0, 0},
        {R"(PRINT "ABCDEFGHIJKLM";)", "1 exe 40", "ended 0 12 [BCDEFGHIJKLM]", 0, 0},
        {"PRINT \"ABCDEFGHIJKLM\"\nA=1:PRINT \"X\"", "1 exe exe 2", "wait 0 1 [X]", 1, 0},
        // STOP
        {R"(PRINT "AB";:STOP:PRINT "C")", "3", "stopped 0 2 [AB]", 0, 0},
        {R"(PRINT "AB";:STOP:PRINT "C")", "3 9", "stopped 0 2 [AB]", 0, 0},
        {R"(PRINT "AB";:STOP:PRINT "C")", "3 exe", "run 0 0 []", 3, 0},
        {R"(PRINT "AB";:STOP:PRINT "C")", "3 exe 2", "wait 0 1 [C]", 3, 0},
        {"STOP\nPRINT \"C\"", "1 run", "run 0 0 []", 3, 0},
        {"STOP\nPRINT \"C\"", "1 run 2", "wait 0 1 [C]", 3, 0},
        {"STOP", "1 home", "command 16 0 []", 3, 0},
        {"STOP", "1 soft", "command 16 0 []", 3, 0},
        {"STOP", "1 up", "stopped 0 0 []", 0, 0},
        // the host's Stop, twice
        {"A=1\nB=2\nPRINT \"C\"", "1 stop", "stopped 0 0 []", 0, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop 9 exe", "run 0 0 []", 3, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop exe 2", "wait 0 1 [C]", 3, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop run 2", "wait 0 1 [C]", 3, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop", "line-shown 0 5 [P0-20]", 3, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop stop 9", "line-shown 0 5 [P0-20]", 3, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop exe", "run 0 0 []", 8, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop exe 2", "wait 0 1 [C]", 8, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop home", "command 16 0 []", 8, 0},
        {"A=1\nB=2\nPRINT \"C\"", "1 stop stop run", "run 0 0 []", 5, 0},
        {R"(PRINT "A","B")", "1 stop", "line-shown 7 5 [P0-10]", 1, 0},
        {R"(PRINT "A","B")", "1 stop exe 1", "wait 0 1 [B]", 8, 0},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 stop 99 run 65", "run 10 13 [           M]", 3, 0},
        // END, and the words that lead to command mode
        {"END\nPRINT 1", "1", "ended 0 0 []", 0, 0},
        {"END\nPRINT 1", "9", "ended 0 0 []", 0, 0},
        {R"(PRINT "A":END)", "1 exe 9", "ended 0 0 []", 0, 0},
        {"COMMAND\nPRINT 1", "1", "command 0 0 []", 0, 6},
        // an error
        {"A=1\nA=", "2", "ended 0 10 [ERR2 P0-20]", 0, 0},
        {"A=1\nA=", "2 stop", "ended 0 10 [ERR2 P0-20]", 0, 0},
        {"A=1\nA=", "2 run 1", "run 0 0 []", 5, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.program) + " / " + row.script);
        TestMachine t;
        t.start(row.program);
        play(t, row.script);
        EXPECT_EQ(moment(t), row.moment);
        EXPECT_EQ(t.m.prev_state, row.prev_state);
        EXPECT_EQ(t.m.base_state, row.base_state);
    }
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
    EXPECT_EQ(moment(t).substr(0, 5), "ended");
    EXPECT_EQ(t.display(), "ERR2 P0-30");
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
