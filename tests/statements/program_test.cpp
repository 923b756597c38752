// The program words: END, REM, LET, RUN, VAC, BREAK, MODE, SET, and words without an effect. How words fail that the
// machine does not have is in core's tests.
#include "shell/commands.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(ProgramWords, DoTheirWork) {
    const char* const rows = R"(
        PRINT 1:END:PRINT 2 || PRINT 3 -> 1            PRINT 1:REM x:PRINT 2 || PRINT 3 -> 1| 3
        REM || PRINT 3 -> 3                            REM " || PRINT 3 -> 3
        IF 1 THEN REM :A=3 || PRINT A -> 0             LET A=5:PRINT A -> 5
        LET A(30)=7:PRINT Z(5) -> 7                    print 1:Print 2:let a=3:PRINT A -> 1| 2| 3
        LET A$="X":LET $="YZ":PRINT A$;$ -> XYZ        ::PRINT 1:: -> 1
        A:"X":5:-A:PRINT 1 -> 1                        LOAD "A",5 STEP:PRINT 1 -> 1
        LIST 10-50,"X:PRINT 1 || PRINT 2 -> 2          VER:VERIFY 1/0:PRINT 1 -> 1
        DATA 1,AB,"X:Y":PRINT 1 -> 1                   SAVE A=5 || PRINT A -> 0
        PASS ->                                        BREAKA A=2:PRINT A -> 2
    )";
    for (const Case& row : arrow_cases(rows)) {
        EXPECT_EQ(failure_of(row.text), "ok") << row.text;
        const std::string shown = shown_by(row.text);
        EXPECT_EQ(shown.substr(shown.starts_with(' ') ? 1 : 0), row.outcome) << row.text;
    }
}

TEST(Run, StartsTheSelectedAreaOrALineAnew) {
    TestMachine t;
    t.load("[P0]\n10 A=A+1:READ B:PRINT A;B\n20 FOR I=1 TO 2:IF A=1;RUN\n30 PRINT \"END\"\n40 DATA 7,8\n"
           "[P1]\n10 A=0:MODE 7:RUN 30\n20 PRINT \"NO\"\n30 GOSUB 40\n40 PRINT A:IF A<3;A=A+1:RUN 40.9\n");
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 1 7", " 2 7", "END"})) << "with the first DATA item";
    EXPECT_EQ(t.m.for_depth, 1) << "the first run's loop is gone";
    t.m.run_page = 1;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.run_through(), (std::vector<std::string>{" 0", " 1", " 2", " 3"}));
    EXPECT_EQ(t.m.gosub_depth, 0) << "the stacks are emptied";
    EXPECT_EQ(t.m.print_mode, 1) << "there is no reset";
    for (const int page : {3, 4}) { // an area without lines, and none
        t.load("[P0]\n10 RUN:VAC\n[P3]\n");
        t.m.run_page = 0;
        run_host_command(*t.simulator, COMMAND_RUN);
        t.m.run_page = page;
        t.tick(3);
        EXPECT_EQ(t.m.run_state + t.m.base_state, 2 * STATE_COMMAND) << page;
        EXPECT_EQ(t.m.error_detail.view(), "");
        EXPECT_EQ(cell(t, 'A').number, 3) << "the rest of the line is dropped";
    }
}

TEST(Vac, ClearsEveryCell) {
    TestMachine t;
    int resets = 0;
    t.m.host.reset_trace = [&resets] { ++resets; };
    for (const int trace_mode : {0, 1}) {
        t.m.trace_mode = trace_mode;
        t.start("A=1:Z$=\"X\":Z(196)=5:$=\"TEXT\":VAC");
        t.run_through();
        for (const Variable& variable : t.m.variables)
            EXPECT_TRUE(variable.kind == -1 && variable.number == 0 && variable.text.empty()) << variable.name.view();
        EXPECT_EQ(resets, trace_mode) << "the trace window's own";
    }
}

TEST(Break, OpensTheTraceWindowAndGoesOn) {
    TestMachine t;
    t.start("BREAK A=5:BREAKA B=6\nC=7");
    t.tick(4);
    EXPECT_EQ(t.m.trace_mode, 1);
    EXPECT_EQ(cell(t, 'A').number, 5) << "its own statement still runs";
    EXPECT_EQ(cell(t, 'B').number, 0) << "the next one waits for its step";
    t.exe();
    EXPECT_EQ(cell(t, 'B').number + cell(t, 'C').number, 6);
}

TEST(Modes, SelectTheAngleUnitAndPRT) {
    // Angle unit and PRT, and programs that leave them; a rejected MODE changes nothing.
    const char* const rows = R"(
        00   MODE 4   MODE 4.5   MODE 7:MODE 8      MODE 8
        10   MODE 5   MODE 5.9   MODE(2+3)          MODE 5:MODE "6"    MODE 5:MODE A$
        20   MODE 6   MODE 5.9999999   A=6:MODE A   MODE 6:MODE 3
        01   MODE 7   MODE 7:MODE 9
        11   MODE 7:MODE 5
        21   MODE 6:MODE 7
    )";
    for (const Case& row : cases(rows)) {
        TestMachine t;
        t.start(row.text);
        t.run_through();
        EXPECT_EQ(std::to_string(t.m.angle_unit) + std::to_string(t.m.print_mode), row.outcome) << row.text;
        t.start("A=1");
        EXPECT_EQ(t.m.print_mode, 0) << "a start clears PRT, and only that";
        EXPECT_EQ(std::to_string(t.m.angle_unit), row.outcome.substr(0, 1)) << row.text;
    }
}

TEST(Modes, SetChoosesTheForms) {
    // The digits of E, F and G, and programs that leave them.
    const char* const rows = R"(
        3 -1 9     SET E 3   set e3   SET E03   SET E3:SET N 5   SET E3:SET E 3 4   SET E3:SET X   SET E3:SET E   SET E3:A=1
        99 -1 9    SET E99
        -1 99 9    SET F99
        -1 12 9    SET F12
        -1 0 9     SET F 0
        -1 1 9     SET F1:SET F123   SET F1:SET F1 2
        3 2 9      SET E3:SET F2
        -1 -1 18   SET G18
        -1 -1 0    SET G 0
        -1 -1 5    SET E3:SET F2:SET G5:SET N   SET G5:SET G19
        -1 -1 9    SETE03   SET n
    )";
    for (const Case& row : cases(rows)) {
        TestMachine t;
        t.start(row.text);
        t.run_through();
        EXPECT_EQ(std::to_string(t.m.set_e_digits) + " " + std::to_string(t.m.set_f_digits) + " " +
                      std::to_string(t.m.set_g_digits),
                  row.outcome)
            << row.text;
    }
    EXPECT_EQ(shown_by("SET  F \t 1 :PRINT 1.25"), " 1.3") << "the statement behind it runs";
}

} // namespace
} // namespace quillon::testing
