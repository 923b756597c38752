// SPDX-License-Identifier: MIT
// PRINT and INPUT beyond the rows of print.txt and dialogues.txt: the pace of PRINT, the longest texts, prompts and
// entries, and every refusal. (The visible columns: in display/lcd_test.)
#include "shell/commands.h"
#include "tests/statements/changes.h"
#include "tests/support/keyboard.h"
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
        t.m.settings.wait_print_sc_ini = first;
        t.m.settings.wait_print_sc = others;
        t.tick(ticks);
        EXPECT_EQ(moment(t), "run 10 13 [BCDEFGHIJKLM]");
        t.tick();
        EXPECT_EQ(moment(t), "wait 0 12 [CDEFGHIJKLMN]");
        EXPECT_EQ(t.m.run.scroll.wait_counter, others);
        EXPECT_EQ(t.m.run.scroll.state_after_scroll, STATE_RUN);
        EXPECT_EQ(t.m.run.scroll.kind_after_scroll, KIND_NONE);
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
    t.tick(t.m.settings.wait_print_sc + 1);
    t.exe();
    EXPECT_EQ(moment(t), "wait 0 12 [" + longest.substr(106, 9) + "END]");
}

/// A machine whose program has come to its first prompt.
struct Asking : TestMachine {
    explicit Asking(std::string_view lines) {
        start(lines);
        wait();
    }
};

TEST(Input, ShowsTheEndOfWhatIsLong) {
    Asking t("INPUT \"A LONG PROMPT TEXT\",A");
    t.tick();
    EXPECT_EQ(t.visible(), "PROMPT TEXT?") << "its last columns";
    type(t, "ABCDEFGHIJKLMNOPQRST");
    EXPECT_EQ(t.visible().substr(0, 11), "JKLMNOPQRST") << "eleven columns, and room for the cursor";
}

TEST(Input, GoesOnWithItsListAfterAStop) {
    Asking t("INPUT \"X\",A,\"Y\",B\nPRINT A;B");
    enter(t, "5");
    t.wait();
    const TokenCode token = t.m.eval.token;
    run_host_command(*t.simulator, COMMAND_STOP);
    t.tick();
    t.m.eval.token = TOKEN_HASH; // as some line that was typed meanwhile leaves it
    t.exe();
    EXPECT_EQ(t.m.eval.token, token);
}

TEST(Input, RefusesWhatIsNoNumberAndAsksAgain) {
    for (const char* entry : {"3*",  "ABC",     "\"X\"", "B$",      "B$+B$", "1/0", "1:2", "1,2",    "5 6", "A=5",
                              "1=1", "PRINT 1", "VAC",   "GOTO 10", "REM",   ")",   "C",   "Z(999)", ":",   " "}) {
        Asking t("A=7:B$=\"X\":C$=\"1\"\nINPUT A,D\nE=1");
        enter(t, entry);
        EXPECT_EQ(t.m.error.error_code, ERROR_INPUT) << entry;
        EXPECT_EQ(t.detail_id(), "INPUT 2") << entry;
        EXPECT_EQ(changes(t.m), " A=7 B$=X C$=1") << "nothing of it has been carried out: " << entry;
        t.tick(5);
        EXPECT_EQ(t.display(), "ERR2") << "until a key: " << entry;
        type(t, "9");
        EXPECT_EQ(moment(t), "run 11 1 [?]") << entry;
        EXPECT_EQ(t.m.error.error_code, ERROR_NONE) << entry;
        for (const char* number : {"5", "6"}) { // the key that led back to the prompt is not typed
            enter(t, number);
            t.wait();
        }
        EXPECT_EQ(changes(t.m), " A=5 B$=X C$=1 D=6 E=1") << entry;
    }
}

} // namespace
} // namespace quillon::testing
