// PRINT beyond the rows of print.txt: pace, the longest texts, the visible columns, and what a run leaves behind.
#include "core/display_line.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

#include <array>

namespace quillon::testing {
namespace {

TEST(Print, ScrollsAtTheConfiguredPace) {
    // the first wait, the others, and the ticks from the item to its second step
    for (const auto& [first, others, ticks] : {std::array{0, 0, 2}, {3, 0, 5}, {0, 7, 9}, {100, 10, 112}}) {
        SCOPED_TRACE(ticks);
        TestMachine t;
        t.start(R"(PRINT "ABCDEFGHIJKLMN")");
        t.m.wait_print_sc_ini = first;
        t.m.wait_print_sc = others;
        t.tick(ticks);
        EXPECT_EQ(moment(t), "run 10 13 [BCDEFGHIJKLM]");
        t.tick();
        EXPECT_EQ(moment(t), "wait 0 12 [CDEFGHIJKLMN]");
        EXPECT_EQ(t.m.wait_counter, others);
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
    TestMachine t;
    const auto first = [&t](int run_state, int column) {
        t.m.run_state = run_state;
        t.m.display_cursor = column;
        return std::pair(column, first_visible_column(t.m));
    };
    for (const int state : {STATE_RUN, STATE_ENDED, STATE_PRINT_WAIT})
        for (const auto& row : {std::pair(0, 0), {12, 0}, {13, 1}, {127, 115}, {509, 497}, {510, 0}})
            EXPECT_EQ(first(state, row.first), row) << state;
    for (const int state : {STATE_INPUT, STATE_COMMAND}) // where a line is typed, its cursor needs a column
        for (const auto& row : {std::pair(11, 0), {12, 1}, {509, 498}, {510, 0}})
            EXPECT_EQ(first(state, row.first), row) << state;
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
