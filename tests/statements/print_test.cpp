// PRINT: separators, waits, and texts that scroll in.
#include "core/display_line.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Print, ScrollsAtTheConfiguredPace) {
    struct Row {
        int wait_print_sc_ini;
        int wait_print_sc;
        int ticks; ///< from the item to its second step
        const char* before;
    };
    const Row rows[] = {
        {0, 0, 2, "run 10 13 [BCDEFGHIJKLM]"},
        {3, 0, 5, "run 10 13 [BCDEFGHIJKLM]"},
        {0, 7, 9, "run 10 13 [BCDEFGHIJKLM]"},
        {100, 10, 112, "run 10 13 [BCDEFGHIJKLM]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.ticks);
        TestMachine t;
        t.start(R"(PRINT "ABCDEFGHIJKLMN")");
        t.m.wait_print_sc_ini = row.wait_print_sc_ini;
        t.m.wait_print_sc = row.wait_print_sc;
        t.tick(row.ticks);
        EXPECT_EQ(moment(t), row.before);
        t.tick();
        EXPECT_EQ(moment(t), "wait 0 12 [CDEFGHIJKLMN]");
        EXPECT_EQ(t.m.wait_counter, row.wait_print_sc);
        EXPECT_EQ(t.m.state_after_scroll, STATE_RUN);
        EXPECT_EQ(t.m.kind_after_scroll, KIND_NONE);
    }
}

TEST(Print, CarriesTheLongestTexts) {
    const std::string thirty = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    const std::string longest = thirty + thirty + thirty + thirty + "ABCDEFG"; // 127 characters
    TestMachine t;
    t.start(R"(PRINT ")" + longest + R"(")");
    t.tick();
    t.exe();
    EXPECT_EQ(moment(t), "wait 0 12 [" + longest.substr(115) + "]");
    // Behind twelve columns 115 more have room: the line ends at column 126.
    t.start(R"(PRINT "0123456789ab";")" + longest + R"(";"END")");
    t.tick(2);
    t.exe();
    EXPECT_EQ(moment(t), "run 7 12 [" + longest.substr(103, 12) + "]");
    t.tick(t.m.wait_print_sc + 1);
    t.exe();
    EXPECT_EQ(moment(t), "wait 0 12 [" + longest.substr(106, 9) + "END]");
}

TEST(Print, ShowsTheColumnsThatEndAtTheWriteColumn) {
    struct Row {
        int run_state;
        int display_cursor;
        int first;
    };
    const Row rows[] = {
        {STATE_RUN, 0, 0},
        {STATE_RUN, 12, 0},
        {STATE_RUN, 13, 1},
        {STATE_ENDED, 127, 115},
        {STATE_RUN, 509, 497},
        {STATE_RUN, 510, 0},
        {STATE_PRINT_WAIT, 13, 1},
        // where a line is typed, its cursor needs a column
        {STATE_INPUT, 11, 0},
        {STATE_INPUT, 12, 1},
        {STATE_COMMAND, 11, 0},
        {STATE_COMMAND, 12, 1},
        {STATE_COMMAND, 509, 498},
        {STATE_COMMAND, 510, 0},
    };
    TestMachine t;
    for (const Row& row : rows) {
        t.m.run_state = row.run_state;
        t.m.display_cursor = row.display_cursor;
        EXPECT_EQ(first_visible_column(t.m), row.first) << row.run_state << " " << row.display_cursor;
    }
}

TEST(Print, StartsAfterARunOnACleanLine) {
    TestMachine t;
    t.start(R"(PRINT "AB";:PRINT:STOP)");
    t.tick(4);
    EXPECT_EQ(t.m.print_clear_pending, 1);
    play(t, "home run");
    EXPECT_EQ(t.m.print_clear_pending, 0);
    EXPECT_EQ(t.display(), "");
    t.start(R"(PRINT "ABCDEFGHIJKLMNOP")");
    play(t, "10 stop stop run");
    EXPECT_EQ(moment(t), "run 0 0 []");
    EXPECT_EQ(t.m.wait_counter, 0);
    t.tick();
    EXPECT_EQ(moment(t), "run 10 12 [ABCDEFGHIJKL]");
}

} // namespace
} // namespace quillon::testing
