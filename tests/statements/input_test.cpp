// INPUT: prompt, entry, refusal and re-prompt, lists, and what STOP and fast typing do to it.
#include "shell/commands.h"
#include "tests/support/evaluation.h"
#include "tests/support/keyboard.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

/// A machine whose program has come to its first prompt.
struct Asking : TestMachine {
    explicit Asking(std::string_view lines) {
        start(lines);
        wait();
    }

    void expect_prompt(const std::string& prompt = "?") const {
        EXPECT_EQ(m.run_state, STATE_RUN);
        EXPECT_EQ(m.stmt_kind, KIND_PROMPT);
        EXPECT_EQ(display(), prompt);
    }

    /// Enters texts, one at each prompt, and goes on to what the program waits for then.
    void answer(std::initializer_list<const char*> entries) {
        for (const char* entry : entries) {
            enter(*this, entry);
            wait();
        }
    }

    [[nodiscard]] double number(char letter) const { return cell(*this, letter).number; }
    [[nodiscard]] std::string_view text(char letter) const { return cell(*this, letter).text.view(); }
};

TEST(Input, ShowsItsPrompt) {
    for (const Case& row :
         arrow_cases(R"(INPUT A -> ?  INPUT "X",A -> X?  INPUT "",A$ -> ?  PRINT "HI";:INPUT A -> HI?)"))
        Asking(row.text).expect_prompt(row.outcome);
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
        EXPECT_EQ(t.number('A'), 7) << entry;
        EXPECT_EQ(t.text('B'), "X") << "nothing of it has been carried out: " << entry;
        t.tick(5);
        EXPECT_EQ(t.display(), "ERR2") << "until a key: " << entry;
        type(t, "9");
        t.expect_prompt();
        EXPECT_EQ(t.m.error_code, ERROR_NONE) << entry;
        t.answer({"5", "6"}); // the key that led back to the prompt is not typed
        EXPECT_EQ(t.number('A') * 100 + t.number('D') * 10 + t.number('E'), 561) << entry;
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
            EXPECT_EQ(t.text('B'), entry.substr(0, 31)) << target;
        }
    }
}

} // namespace
} // namespace quillon::testing
