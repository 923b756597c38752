// DATA by areas, and behind a fault. The rest is in data.txt; what the index of items holds is in core's tests.
#include "shell/commands.h"
#include "tests/support/keyboard.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Data, StaysAtAFault) {
    TestMachine t;
    t.start("DATA 1,X,3\nREAD B,A,C");
    t.run_through();
    EXPECT_EQ(t.m.data_index[static_cast<std::size_t>(t.m.data_pos)].text.view(), "X");
}

TEST(Data, BelongsToItsArea) {
    TestMachine t;
    t.load("[P1]\n10 READ A:PRINT A\n20 READ A\n30 DATA 11\n[P0]\n10 DATA 1,2\n[P2]\n10 READ A\n"
           "[P3]\n10 RESTORE 20:READ A:PRINT A\n20 DATA 2\n[P4]\n10 RESTORE 20\n");
    const std::vector<std::string> shown[] = {{" 11", "ERR4 P1-20"}, {"ERR4 P2-10"}, {" 2"}, {"ERR4 P4-10"}};
    for (const int page : {1, 2, 3, 4, 3}) { // a start goes back to the first item
        t.m.run_page = page;
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.run_through(), shown[page - 1]) << page;
    }
}

} // namespace
} // namespace quillon::testing
