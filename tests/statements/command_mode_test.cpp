// Command mode beyond the rows of command_lines.txt: the last result, a stopped INPUT meanwhile, and a clean start.
#include "shell/commands.h"
#include "tests/statements/changes.h"
#include "tests/support/keyboard.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct CommandMode : public ::testing::Test, public CommandLine {};

TEST_F(CommandMode, KeepsTheLastResult) {
    for (const Case& row :
         arrow_cases(R"(2+3 -> 5  A=7 -> 7  A$="X" -> 0  2<3 -> 1  2>3 -> 0  "AB" -> 0  6:8 -> 8  9 -> 9
                                          PRINT 4 -> 0  9 -> 9  1/0 -> 0  3*4 -> 12)")) {
        says(row.text);
        EXPECT_EQ(m.last_result, std::stoi(row.outcome)) << row.text;
    }
    exe();
    EXPECT_EQ(m.last_result, 12) << "an empty line leaves it";
}

TEST_F(CommandMode, LeavesAStoppedInputItsVariables) {
    for (const char* line : {"4", "PRINT 1", "D=1", "1/0", "INPUT D"}) {
        start("VAC:INPUT A,B\nC=1");
        wait();
        type(*this, "123"); // no part of the line that follows
        run_host_command(*simulator, COMMAND_STOP);
        press(*this, HOME);
        enter(*this, line);
        if (m.stmt_kind == KIND_PROMPT)
            enter(*this, "9");
        else if (m.error_code != ERROR_NONE)
            press(*this, HOME);
        else if (m.run_state != STATE_COMMAND)
            exe();
        EXPECT_EQ(m.history[0].view(), line);
        ASSERT_EQ(m.run_state, STATE_COMMAND) << line;
        for (const char* entry : {"", "5", "6"}) { // on with the program, and its two entries
            enter(*this, entry);
            wait();
        }
        EXPECT_TRUE(changes(m).starts_with(" A=5 B=6 C=1")) << line << ":" << changes(m);
    }
}

TEST_F(CommandMode, TheCommandLineCommandStartsClean) {
    for (const char* program : {"PRINT \"A TEXT THAT SCROLLS IN\"", "INPUT A", "STOP", "A=1/0", "PRINT:A=1",
                                "PRINT 1;2,3", "BEEPS 4,9,50", "FOR I=1 TO 2", "A=1:END:A=2", "COMMAND:A=2"}) {
        says("1");
        press(*this, UP);
        start(program);
        tick(3);
        run_host_command(*simulator, COMMAND_LINE);
        EXPECT_EQ(display(), "READY P0") << program;
        EXPECT_EQ(m.error_detail.view(), "") << program;
        EXPECT_EQ(m.history_index, -1) << program;
        EXPECT_EQ(says("5"), "5") << program;
        exe();
        tick(3);
        EXPECT_EQ(m.run_state, STATE_COMMAND) << "nothing to go on with after " << program;
    }
}

} // namespace
} // namespace quillon::testing
