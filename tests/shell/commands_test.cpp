// The host's commands RUN, STOP and page selection, from every state.
#include "tests/support/scripts.h"

#include "shell/commands.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

/// A machine in the middle of a program, with everything set that a start has to clear.
void make_used(TestMachine& t) {
    t.load(
        "[P0]\n10 FOR I=1 TO 9:GOSUB 20\n20 PRINT \"ABCDEFGHIJKLMNOP\";:PRINT\n30 DATA 1\n[P4]\n5 DATA 2,3\n7 A=1\n");
    play(t, "run 3 exe");
    t.m.error_detail = "left over";
    t.m.print_clear_pending = 1;
    t.m.program_ended = 1;
    t.m.saved_token = TOKEN_COLON;
    t.m.saved_stmt_kind = KIND_PRINT;
    t.m.kind_after_scroll = KIND_PRINT;
    t.m.state_after_scroll = STATE_PRINT_WAIT;
    t.m.wait_counter = 9;
    t.m.print_mode = 1;
    t.m.angle_unit = ANGLE_RAD;
    t.m.variables[0].kind = 0;
    t.m.variables[0].number = 42;
}

void expect_clean_start(const TestMachine& t) {
    EXPECT_EQ(t.display(), "");
    EXPECT_EQ(t.m.display_cursor, 0);
    EXPECT_EQ(t.m.display_offset, 0);
    EXPECT_EQ(t.m.stmt_kind, KIND_NONE);
    EXPECT_TRUE(t.m.error_detail.empty());
    EXPECT_EQ(t.m.error_code, ERROR_NONE);
    EXPECT_EQ(t.m.for_depth, 0);
    EXPECT_EQ(t.m.gosub_depth, 0);
    EXPECT_EQ(t.m.print_clear_pending, 0);
    EXPECT_EQ(t.m.program_ended, 0);
    EXPECT_EQ(t.m.saved_token, 0);
    EXPECT_EQ(t.m.saved_stmt_kind, KIND_NONE);
    EXPECT_EQ(t.m.kind_after_scroll, KIND_NONE);
    EXPECT_EQ(t.m.state_after_scroll, STATE_RUN);
    EXPECT_EQ(t.m.wait_counter, 0);
    EXPECT_EQ(t.m.print_mode, 0);
    EXPECT_EQ(t.m.cur_line, 0);
    EXPECT_EQ(t.m.angle_unit, ANGLE_RAD) << "outlives a start";
    EXPECT_EQ(t.m.variables[0].number, 42) << "outlives a start";
}

TEST(HostRun, StartsTheSelectedAreaCleanlyFromEveryState) {
    for (int state = STATE_RUN; state <= STATE_TO_COMMAND; ++state) {
        if (state == STATE_STOPPED)
            continue;
        SCOPED_TRACE(state);
        TestMachine t;
        make_used(t);
        t.m.run_state = state;
        t.m.base_state = STATE_COMMAND;
        run_host_command(*t.simulator, COMMAND_PAGE_0 + 4);
        run_host_command(*t.simulator, COMMAND_RUN);
        expect_clean_start(t);
        EXPECT_EQ(t.m.run_state, STATE_RUN);
        EXPECT_EQ(t.m.base_state, STATE_RUN);
        EXPECT_EQ(t.m.prev_state, STATE_SELECT);
        EXPECT_EQ(t.m.cur_area, 4);
        EXPECT_EQ(t.m.data_index[static_cast<std::size_t>(t.m.data_pos)].kind, DataItem::LINE);
        EXPECT_EQ(t.m.data_index[static_cast<std::size_t>(t.m.data_pos)].arg, 5) << "the first DATA of P4";
        t.tick(2);
        EXPECT_EQ(t.m.variables[0].number, 1);
    }
}

TEST(HostRun, GoesOnAfterAStop) {
    TestMachine t;
    make_used(t);
    t.m.program_ended = 0;
    t.m.run_state = STATE_STOPPED;
    t.m.saved_run_state = STATE_PRINT_WAIT;
    const int depth = t.m.gosub_depth;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.m.run_state, STATE_PRINT_WAIT);
    EXPECT_EQ(t.m.prev_state, STATE_STOPPED);
    EXPECT_EQ(t.m.gosub_depth, depth);
    EXPECT_EQ(t.m.error_detail.view(), "left over");
    EXPECT_EQ(t.display(), "");
}

TEST(HostRun, LeadsToCommandModeWhereTheAreaIsEmpty) {
    for (const char* listing : {"[P0]\n10 A=1\n", "[P0]\n10 A=1\n[P6]\n"}) {
        SCOPED_TRACE(listing);
        TestMachine t;
        make_used(t);
        ASSERT_TRUE(t.load(listing));
        t.m.error_detail = "left over";
        run_host_command(*t.simulator, COMMAND_PAGE_0 + 6);
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(moment(t), "command 0 0 []");
        EXPECT_EQ(t.m.base_state, STATE_COMMAND);
        EXPECT_EQ(t.m.error_code, ERROR_NONE);
        EXPECT_TRUE(t.m.error_detail.empty());
        t.tick(5);
        EXPECT_EQ(moment(t), "command 0 0 []");
    }
}

TEST(HostRun, RefreshesAnOpenTraceWindow) {
    for (const int trace_mode : {0, 1}) {
        TestMachine t;
        int refreshed = 0;
        t.load("[P0]\n10 A=1\n");
        t.m.trace_mode = trace_mode;
        t.m.host.refresh_trace = [&refreshed] { ++refreshed; };
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(refreshed, trace_mode);
    }
}

TEST(HostRun, NeedsAListing) {
    TestMachine t;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.messages, std::vector<std::string>{"SYSTEM 3\x01"});
    EXPECT_EQ(t.m.run_state, STATE_SELECT);
    make_used(t);
    EXPECT_FALSE(t.load("[P0]\n10 A=1\nx\n"));
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.messages.size(), 2U) << "nothing of a refused listing runs, nor of the one before it";
    EXPECT_EQ(t.m.run_state, STATE_SELECT);
    EXPECT_EQ(t.display(), "");
}

TEST(HostStop, HaltsWhatRuns) {
    struct Row {
        int from;
        int to;
        int saved_run_state;
    };
    constexpr int UNTOUCHED = 77;
    const Row rows[] = {
        {STATE_RUN, STATE_STOPPED, STATE_RUN},           {STATE_PRINT_WAIT, STATE_LINE_SHOWN, UNTOUCHED},
        {STATE_INPUT, STATE_STOPPED, STATE_INPUT},       {STATE_STOPPED, STATE_LINE_SHOWN, UNTOUCHED},
        {STATE_ENDED, STATE_ENDED, UNTOUCHED},           {STATE_SELECT, STATE_SELECT, UNTOUCHED},
        {STATE_COMMAND, STATE_COMMAND, UNTOUCHED},       {STATE_COMMAND_ERROR, STATE_STOPPED, STATE_COMMAND_ERROR},
        {STATE_LINE_SHOWN, STATE_LINE_SHOWN, UNTOUCHED}, {STATE_TO_COMMAND, STATE_STOPPED, STATE_TO_COMMAND},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.from);
        TestMachine t;
        t.load("[P3]\n10 A=1\n120 PRINT \"XYZ\",1\n");
        run_host_command(*t.simulator, COMMAND_PAGE_0 + 3);
        play(t, "run 2");
        ASSERT_EQ(moment(t), "wait 7 3 [XYZ]");
        t.m.run_state = row.from;
        t.m.prev_state = t.m.saved_run_state = UNTOUCHED;
        t.m.saved_token = t.m.saved_stmt_kind = UNTOUCHED;
        run_host_command(*t.simulator, COMMAND_STOP);
        EXPECT_EQ(t.m.run_state, row.to);
        EXPECT_EQ(t.m.saved_run_state, row.saved_run_state);
        const bool acted = row.from != row.to;
        EXPECT_EQ(t.m.prev_state, acted ? row.from : UNTOUCHED);
        EXPECT_EQ(t.m.saved_token, acted ? ',' : UNTOUCHED);
        EXPECT_EQ(t.m.saved_stmt_kind, acted ? KIND_PRINT : UNTOUCHED);
        EXPECT_EQ(t.display(), acted && row.to == STATE_LINE_SHOWN ? "P3-120" : "XYZ");
        EXPECT_EQ(t.m.display_cursor, acted && row.to == STATE_LINE_SHOWN ? 6 : 3);
    }
}

TEST(HostStop, DoesNothingWithoutAListing) {
    TestMachine t;
    t.m.run_state = STATE_RUN;
    run_host_command(*t.simulator, COMMAND_STOP);
    EXPECT_EQ(t.m.run_state, STATE_RUN);
}

TEST(HostStop, ShowsWhereALongPrintStands) {
    TestMachine t;
    t.start(R"(PRINT "ABCDEFGHIJKLMNOP")");
    play(t, "1 exe stop");
    EXPECT_EQ(t.visible(), "P0-0        ") << "the program has passed its last line";
    t.start(R"(PRINT "ABCDEFGHIJKLMNOP":A=1)");
    play(t, "1 exe stop");
    EXPECT_EQ(t.visible(), "P0-10       ");
}

TEST(PageSelection, SetsTheAreaAndNothingElse) {
    TestMachine t;
    make_used(t);
    const std::string before = moment(t);
    run_host_command(*t.simulator, COMMAND_PAGE_0 + 4);
    EXPECT_EQ(t.m.run_page, 4);
    EXPECT_EQ(t.m.cur_area, 0);
    EXPECT_EQ(moment(t), before);
}

} // namespace
} // namespace quillon::testing
