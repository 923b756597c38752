// RUN and STOP from every state, and what the window asks for beside the commands. What each command changes, by its
// number, is tested through the driving protocol.
#include "shell/commands.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

/// A machine in the middle of a program.
void make_used(TestMachine& t) {
    t.load("[P0]\n10 FOR I=1 TO 9:GOSUB 20\n20 PRINT \"ABCDEFGHIJKLMNOP\";:PRINT\n[P4]\n7 A=A+1\n");
    play(t, "run 3 exe");
    t.m.error_detail = "left over";
    t.m.program_ended = t.m.print_clear_pending = 1;
    t.m.wait_counter = 9;
    t.m.variables[0].kind = 0;
    t.m.variables[0].number = 42;
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
        t.m.run_page = 4;
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.m.print_clear_pending, 0);
        EXPECT_EQ(t.m.display_offset, 0);
        t.tick(2);
        EXPECT_EQ(moment(t), "ended 0 0 []");
        EXPECT_EQ(t.m.variables[0].number, 43) << "variables outlive a start";
    }
}

TEST(HostRun, LeadsToCommandModeWhereTheAreaIsEmpty) {
    for (const char* listing : {"[P0]\n10 A=1\n", "[P0]\n10 A=1\n[P6]\n"}) {
        SCOPED_TRACE(listing);
        TestMachine t;
        make_used(t);
        ASSERT_TRUE(t.load(listing));
        t.m.error_detail = "left over";
        t.m.run_page = 6;
        run_host_command(*t.simulator, COMMAND_RUN);
        for (int tick = 0; tick < 2; ++tick, t.tick(5))
            EXPECT_EQ(moment(t), "command 0 0 []");
        EXPECT_EQ(t.m.base_state, STATE_COMMAND);
        EXPECT_EQ(t.m.error_code, ERROR_NONE);
        EXPECT_TRUE(t.m.error_detail.empty());
    }
}

TEST(HostRun, NeedsAListing) {
    for (const bool refused : {false, true}) {
        TestMachine t;
        if (refused) {
            make_used(t);
            EXPECT_FALSE(t.load("[P0]\n10 A=1\nx\n"));
        }
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.messages, std::vector<std::string>{"SYSTEM 3\x01"});
        EXPECT_EQ(t.m.run_state, STATE_SELECT) << "nothing of a refused listing runs, nor of the one before it";
        t.m.run_state = STATE_RUN;
        run_host_command(*t.simulator, COMMAND_STOP);
        EXPECT_EQ(t.m.run_state, STATE_RUN);
    }
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
        t.m.run_page = 3;
        play(t, "run 2");
        ASSERT_EQ(moment(t), "wait 7 3 [XYZ]");
        t.m.run_state = row.from;
        t.m.prev_state = t.m.saved_run_state = t.m.saved_token = t.m.saved_stmt_kind = UNTOUCHED;
        run_host_command(*t.simulator, COMMAND_STOP);
        EXPECT_EQ(t.m.run_state, row.to);
        EXPECT_EQ(t.m.saved_run_state, row.saved_run_state);
        const bool acted = row.from != row.to;
        EXPECT_EQ(t.m.prev_state, acted ? row.from : UNTOUCHED);
        EXPECT_EQ(t.m.saved_token, acted ? ',' : UNTOUCHED);
        EXPECT_EQ(t.m.saved_stmt_kind, acted ? KIND_PRINT : UNTOUCHED);
        const bool shown = acted && row.to == STATE_LINE_SHOWN;
        EXPECT_EQ(t.display(), shown ? "P3-120" : "XYZ");
        EXPECT_EQ(t.m.display_cursor, shown ? 6 : 3);
    }
    TestMachine past_its_end;
    past_its_end.start(R"(PRINT "ABCDEFGHIJKLMNOP")");
    play(past_its_end, "1 exe stop");
    EXPECT_EQ(past_its_end.visible(), "P0-0        ");
}

TEST(Window, TitleNamesTheListing) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "Quillon Simulator."},
        {"test.bas", "Quillon Simulator. [test.bas]"},
        {"C:\\basic\\100%s \xE3\x82\xA1.bas", "Quillon Simulator. [100%s \xE3\x82\xA1.bas]"},
        {"/users/me/a b.bas", "Quillon Simulator. [a b.bas]"},
    };
    for (const auto& [path, title] : rows) {
        TestMachine t;
        t.simulator->settings.last_file = path;
        EXPECT_EQ(window_title(*t.simulator), title);
    }
}

TEST(Window, CallsTheEditorWithTheListingAsItIs) {
    struct Row {
        const char* editor;
        const char* listing;
        const char* call; ///< or the message
    };
    const Row rows[] = {
        {"ed -n  --x", "/home/a b/\"x\" $(rm).bas", "ed|-n|--x|/home/a b/\"x\" $(rm).bas|"},
        {"notepad.exe", "a.bas", "xdg-open|a.bas|"},
        {"C:\\windows\\notepad.exe", "a.bas", "xdg-open|a.bas|"},
        {"", "a.bas", "SYSTEM 10\x01"},
        {"", "", "SYSTEM 10\x01"},
        {"ed", "", "SYSTEM 3\x01"},
    };
    for (const Row& row : rows) {
        TestMachine t;
        t.simulator->settings.editor = row.editor;
        t.simulator->settings.last_file = row.listing;
        std::string told;
        if (const auto call = editor_call(*t.simulator)) {
            told = call->program + "|";
            for (const std::string& argument : call->arguments)
                told += argument + "|";
        }
        for (const std::string& message : t.messages)
            told += message;
        EXPECT_EQ(told, row.call);
    }
}

} // namespace
} // namespace quillon::testing
