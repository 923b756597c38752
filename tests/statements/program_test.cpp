// RUN and VAC. The other words are in words.txt; how words fail that the machine does not have is in core's tests.
#include "shell/commands.h"
#include "tests/support/keyboard.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Run, StartsTheSelectedAreaOrALineAnew) {
    TestMachine t;
    t.load("[P0]\n10 A=A+1:READ B:PRINT A;B\n20 FOR I=1 TO 2:IF A=1;RUN\n30 PRINT \"END\"\n40 DATA 7,8\n"
           "[P1]\n10 A=0:MODE 7:RUN 30\n20 PRINT \"NO\"\n30 GOSUB 40\n40 PRINT A:IF A<3;A=A+1:RUN 40.9\n");
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 1 7", " 2 7", "END"})) << "with the first DATA item";
    EXPECT_EQ(t.m.for_depth, 1) << "the first run's loop is gone";
    t.m.run_page = 1;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 0", " 1", " 2", " 3"}));
    EXPECT_EQ(t.m.gosub_depth, 0) << "the stacks are emptied";
    EXPECT_EQ(t.m.print_mode, 1) << "there is no reset";
    for (const int page : {3, 4}) { // an area without lines, and none
        t.load("[P0]\n10 RUN:VAC\n[P3]\n");
        t.m.run_page = 0;
        run_host_command(*t.simulator, COMMAND_RUN);
        t.m.run_page = page;
        t.tick(3);
        EXPECT_EQ(t.m.run_state + t.m.base_state, 2 * STATE_COMMAND) << page;
        EXPECT_EQ(t.m.error_detail.view(), "");
        EXPECT_EQ(cell(t, 'A').number, 3) << "the rest of the line is dropped";
    }
}

TEST(Vac, ClearsEveryCell) {
    TestMachine t;
    int resets = 0;
    t.m.host.reset_trace = [&resets] { ++resets; };
    for (const int trace_mode : {0, 1}) {
        t.m.trace_mode = trace_mode;
        t.start("A=1:Z$=\"X\":Z(196)=5:$=\"TEXT\":VAC");
        t.run_through();
        for (const Variable& variable : t.m.variables)
            EXPECT_TRUE(variable.kind == -1 && variable.number == 0 && variable.text.empty()) << variable.name.view();
        EXPECT_EQ(resets, trace_mode) << "the trace window's own";
    }
}

} // namespace
} // namespace quillon::testing
