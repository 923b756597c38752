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

TEST(Input, TakesANumber) {
    Asking t("INPUT A\nB=A*2");
    t.tick(30);
    t.expect_prompt();
    type(t, "1");
    EXPECT_EQ(t.display(), "1_") << "the prompt is gone with the first key";
    type(t, "2");
    EXPECT_EQ(t.number('A'), 0);
    t.exe();
    EXPECT_EQ(t.number('A'), 12);
    EXPECT_EQ(t.display(), "");
    t.wait();
    EXPECT_EQ(t.number('B'), 24);
}

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

TEST(Input, TakesAnyNumericExpression) {
    const char* const rows = R"(
        12 -> 12  -3.5 -> -3.5  3*4 -> 12  2*B -> 14  (2+3 -> 5  SIN 30 -> 0.5  FACT(2+1)+1 -> 7  &HFF -> 255
        LEN("AB") -> 2  C(1) -> 8
    )";
    for (const Case& row : arrow_cases(rows)) {
        Asking t("B=7:D=8:INPUT A");
        enter(t, row.text);
        EXPECT_DOUBLE_EQ(t.number('A'), std::stod(row.outcome)) << row.text;
        EXPECT_EQ(failure_of(t.m), "") << row.text;
    }
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

TEST(Input, AsksAgainForAnEmptyEntry) {
    for (const char* program : {"INPUT A", "INPUT A$", "INPUT \"N\",A"}) {
        Asking t(program);
        t.exe();
        EXPECT_EQ(t.m.stmt_kind, KIND_PROMPT) << "EXE is no key";
        for (const int key : {HOME, BACKSPACE}) {
            press(t, key);
            EXPECT_EQ(t.m.run_state, STATE_INPUT);
            t.exe();
            t.expect_prompt();
        }
        t.answer({"8"});
        EXPECT_EQ(t.m.run_state, STATE_ENDED) << program;
    }
}

TEST(Input, GoesThroughItsList) {
    Asking t("A$=\"OLD\":INPUT \"N\",A,B$,\"M\",C(2):F=A+1\nG=1");
    t.expect_prompt("N?");
    EXPECT_EQ(cell(t, 'A').kind, 0) << "already of the type that will be entered";
    t.answer({"1"});
    t.expect_prompt();
    EXPECT_EQ(cell(t, 'B').kind, 1);
    t.answer({"TEXT"});
    t.expect_prompt("M?");
    t.answer({"3"});
    EXPECT_EQ(t.number('A') * 1000 + t.number('E') * 100 + t.number('F') * 10 + t.number('G'), 1321);
    EXPECT_EQ(t.text('B'), "TEXT");

    Asking loop("FOR I=1 TO 2:IF I>0 THEN INPUT A:B=B+A\nNEXT I:PRINT B");
    loop.answer({"3", "4"});
    EXPECT_EQ(loop.display(), " 7");
}

TEST(Input, IsStoppedAndGoesOn) {
    for (const bool typing : {false, true}) {
        for (const bool by_exe : {true, false}) {
            Asking t("INPUT A,B\nC=1");
            if (typing)
                type(t, "55");
            run_host_command(*t.simulator, COMMAND_STOP);
            t.tick(3);
            EXPECT_EQ(t.m.run_state, STATE_STOPPED);
            if (by_exe)
                t.exe(); // asks anew
            else
                run_host_command(*t.simulator, COMMAND_RUN);
            t.tick();
            if (typing && !by_exe)
                press(t, HOME); // on with the entry
            t.answer({"7", "8"});
            EXPECT_EQ(t.number('A') * 100 + t.number('B') * 10 + t.number('C'), 781) << typing << by_exe;
        }
    }
}

TEST(Input, LosesNoKeyHoweverFastTheyCome) {
    Asking t("INPUT A,B,C$");
    for (int entry = 0; entry < 3; ++entry) { // the same key for each
        t.expect_prompt();
        type_at_once(t, "1\n");
        t.wait();
    }
    EXPECT_EQ(t.number('A') + t.number('B'), 2);
    EXPECT_EQ(t.text('C'), "1");

    Asking next("INPUT A,B");
    roll_over(next, '3', ENTER);
    EXPECT_EQ(next.number('A'), 3);
    next.expect_prompt(); // though the 3 was still down
    roll_over(next, '*', ENTER);
    EXPECT_EQ(next.display(), "ERR2");
}

} // namespace
} // namespace quillon::testing
