// INPUT beyond the rows of dialogues.txt: long prompts and entries, and every refusal.
#include "tests/statements/changes.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

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

TEST(Input, RefusesWhatIsNoNumberAndAsksAgain) {
    for (const char* entry : {"3*",  "ABC",     "\"X\"", "B$",      "B$+B$", "1/0", "1:2", "1,2",    "5 6", "A=5",
                              "1=1", "PRINT 1", "VAC",   "GOTO 10", "REM",   ")",   "C",   "Z(999)", ":",   " "}) {
        Asking t("A=7:B$=\"X\":C$=\"1\"\nINPUT A,D\nE=1");
        enter(t, entry);
        EXPECT_EQ(t.m.error_code, ERROR_INPUT) << entry;
        EXPECT_EQ(t.detail_id(), "INPUT 2") << entry;
        EXPECT_EQ(changes(t.m), " A=7 B$=X C$=1") << "nothing of it has been carried out: " << entry;
        t.tick(5);
        EXPECT_EQ(t.display(), "ERR2") << "until a key: " << entry;
        type(t, "9");
        EXPECT_EQ(moment(t), "run 11 1 [?]") << entry;
        EXPECT_EQ(t.m.error_code, ERROR_NONE) << entry;
        for (const char* number : {"5", "6"}) { // the key that led back to the prompt is not typed
            enter(t, number);
            t.wait();
        }
        EXPECT_EQ(changes(t.m), " A=5 B$=X C$=1 D=6 E=1") << entry;
    }
}

TEST(Input, TakesAString) {
    const std::string longer = "1234567890123456789012345678901234567890";
    for (const std::string target : {"A$", "$", "Z$(5)"}) {
        for (const std::string& entry : {std::string("X"), std::string("longer than seven"), std::string("\"Q\":,"),
                                         std::string("  A "), longer.substr(0, 31), longer}) {
            Asking t(std::string("INPUT ").append(target).append(":B$=").append(target));
            enter(t, entry);
            t.wait();
            EXPECT_EQ(cell(t, 'B').text.view(), entry.substr(0, 31)) << target;
        }
    }
}

} // namespace
} // namespace quillon::testing
