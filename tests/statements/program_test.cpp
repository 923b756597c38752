// SPDX-License-Identifier: MIT
// RUN, VAC, and DATA by areas and behind a fault. The other words are in words.txt, the rest of DATA in data.txt; how
// words fail that the machine does not have, and what the index of DATA items holds, is in core's tests.
#include "shell/commands.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Run, StartsTheSelectedAreaOrALineAnew) {
    TestMachine t;
    t.load("[P0]\n10 A=A+1:READ B:PRINT A;B\n20 FOR I=1 TO 2:IF A=1;RUN\n30 PRINT \"END\"\n40 DATA 7,8\n"
           "[P1]\n10 A=0:MODE 7:RUN 30\n20 PRINT \"NO\"\n30 GOSUB 40\n40 PRINT A:IF A<3;A=A+1:RUN 40.9\n");
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 1 7", " 2 7", "END"})) << "with the first DATA item";
    EXPECT_EQ(t.m.program.for_depth, 1) << "the first run's loop is gone";
    t.m.settings.run_page = 1;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 0", " 1", " 2", " 3"}));
    EXPECT_EQ(t.m.program.gosub_depth, 0) << "the stacks are emptied";
    EXPECT_TRUE(t.m.screen.print_mode) << "there is no reset";
    for (const int page : {3, 4}) { // an area without lines, and none
        t.load("[P0]\n10 RUN:VAC\n[P3]\n");
        t.m.settings.run_page = 0;
        run_host_command(*t.simulator, COMMAND_RUN);
        t.m.settings.run_page = page;
        t.tick(3);
        EXPECT_TRUE(t.m.run.run_state == STATE_COMMAND && t.m.run.base_state == STATE_COMMAND) << page;
        EXPECT_EQ(t.m.error.error_detail.view(), "");
        EXPECT_EQ(cell(t, 'A').number, 3) << "the rest of the line is dropped";
    }
}

TEST(Run, RunsOffTheEndOfAFullArea) {
    std::string lines;
    for (int i = 0; i < LINES_PER_AREA; ++i)
        lines += "A=A+1\n";
    TestMachine t;
    t.start(lines);
    t.tick(LINES_PER_AREA);
    EXPECT_EQ(t.m.run.run_state, STATE_RUN);
    t.tick();
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
    EXPECT_EQ(t.m.run.program_ended, 0);
    EXPECT_EQ(cell(t, 'A').number, LINES_PER_AREA);
}

TEST(Vac, ResetsTheTraceWindow) {
    TestMachine t;
    int resets = 0;
    t.simulator->around.host.reset_trace = [&resets] { ++resets; };
    for (const bool trace_mode : {false, true}) {
        t.m.trace.trace_mode = trace_mode;
        t.start("VAC");
        t.run_through();
        EXPECT_EQ(resets, trace_mode ? 1 : 0);
    }
}

TEST(Data, StaysAtAFault) {
    TestMachine t;
    t.start("DATA 1,X,3\nREAD B,A,C");
    t.run_through();
    EXPECT_EQ(t.m.listing->data[static_cast<std::size_t>(t.m.program.data_pos)].text.view(), "X");
}

TEST(Data, BelongsToItsArea) {
    TestMachine t;
    t.load("[P1]\n10 READ A:PRINT A\n20 READ A\n30 DATA 11\n[P0]\n10 DATA 1,2\n[P2]\n10 READ A\n"
           "[P3]\n10 RESTORE 20:READ A:PRINT A\n20 DATA 2\n[P4]\n10 RESTORE 20\n");
    const std::vector<std::string> shown[] = {{" 11", "ERR4 P1-20"}, {"ERR4 P2-10"}, {" 2"}, {"ERR4 P4-10"}};
    for (const int page : {1, 2, 3, 4, 3}) { // a start goes back to the first item
        t.m.settings.run_page = page;
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.run_through(), shown[page - 1]) << page;
    }
}

} // namespace
} // namespace quillon::testing
