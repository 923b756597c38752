// Command mode: what lines show, the result and its life, errors, RUN, a stopped program meanwhile, and its limits.
#include "shell/commands.h"
#include "tests/support/keyboard.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct CommandMode : public ::testing::Test, public CommandLine {
    [[nodiscard]] double number(char letter) const { return cell(*this, letter).number; }
};

TEST_F(CommandMode, ShowsValues) {
    expect(R"(
        2+3 -> 5                         -2.5 -> -2.5         1/3 -> 0.3333333333  A=5 ->
        A*2 -> 10                        A -> 5               LET A=6 ->           A -> 6
        B$ ->                            B$="XY" ->           B$ -> XY             B$+"Z" -> XYZ
        "AB"+"CD" -> ABCD                STR$(12)+"!" -> 12!  SIN 30 -> 0.5        PI -> 3.141592654
        1EX12 -> 1\ex12                  2<3 ->               A=1:B=2:A+B -> 3     MODE 5:SIN(PI/2) -> 1
        SET F 2:1/4 -> 0.25              SET N ->             7 STOP -> 7          READ# ->
        REM 1:2 ->                       CLEAR 5 ->           : ->                 A=1: ->
        IF 1 THEN A=9 -> ERR4 GOTO 5[1]  IF 1;A=9:A -> 9      IF 0;A=8:A ->        FOR I=1 TO 3:A=A*2:NEXT I:A -> 72
        RUN ->                           GOTO #0 ->           RESTORE ->           RUN 10 -> ERR2 RUN 1[10]
        READ A -> ERR4 READ 2            GOTO 10 -> ERR4 GOTO 5[10]                RETURN -> ERR7 RETURN 0
    )");
}

TEST_F(CommandMode, RunsPrintListsAtOnce) {
    expect(R"(
        PRINT 1 -> 1                              PRINT 1;2;3 -> 123
        PRINT -1;"A" -> -1A                       PRINT 1; -> 1
        PRINT "AB","CD" -> CD                     PRINT "ABC","D";"E" -> DE
        PRINT ->                                  PRINT:PRINT 5 -> 5
        PRINT 123:PRINT 4 -> 4                    PRINT 123;:PRINT 4 -> 4
        PRINT 123:7 -> 7                          PRINT 123:A=7 -> 123
        A=7:PRINT A:A=8 -> 7                      PRINT "ABCDEFGHIJKL" -> ABCDEFGHIJKL
        PRINT "ABCDEFGHIJKLMNOP" -> EFGHIJKLMNOP  PRINT "ABCDEFGHIJKLMNOP";1 -> 1FGHIJKLMNOP
        PRINT "ABCDEFGHIJKLMNOP",1 -> 1           PRINT "ABCDEFGHIJ";"KLMNOP" -> EFGHIJKLMNOP
        PRINT 1, -> ERR2 PRINT 2                  PRINT 1;2 3 -> ERR2 PRINT 1 : 0x0001 (TOKEN_ID)
        PRINT 1/0 -> ERR3 SYSTEM 5                PRINT 5:PRINT 1/0 -> ERR3 SYSTEM 5
        FOR I=1 TO 3:PRINT I;:NEXT I -> 3         2 -> 2
    )");
}

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

TEST_F(CommandMode, AResultStandsUntilEXEOrAKey) {
    enter(*this, "2+3");
    tick(50);
    EXPECT_EQ(display(), "5");
    EXPECT_EQ(m.stmt_kind, KIND_RESULT);
    exe();
    EXPECT_EQ(m.run_state, STATE_COMMAND);
    EXPECT_EQ(display(), "");
    for (int i = 0; i < 3; ++i) { // the same key as the last one typed, and fast
        type_at_once(*this, "1\n");
        EXPECT_EQ(display(), "1");
    }
    type(*this, "7");
    EXPECT_EQ(m.entry_line.text.view(), "7") << "the key is typed";
    roll_over(*this, '+', '8');
    roll_over(*this, '9', ENTER);
    EXPECT_EQ(display(), "96") << "though the 9 was still down after EXE";
}

TEST_F(CommandMode, AnErrorStandsUntilTheClearKey) {
    for (const int key : {HOME, UP}) {
        enter(*this, "A=1/0:B=1");
        type(*this, "1");
        exe();
        tick(30);
        EXPECT_EQ(display(), "ERR3");
        press(*this, key);
        EXPECT_EQ(m.run_state, STATE_COMMAND);
        EXPECT_EQ(m.error_code, ERROR_NONE);
        EXPECT_EQ(m.entry_line.text.view(), "") << "Up recalls nothing here";
    }
    EXPECT_EQ(number('B'), 0);
    EXPECT_EQ(m.history[0].view(), "A=1/0:B=1") << "what failed is remembered too";
}

TEST_F(CommandMode, ATypedInputAsksForOneVariable) {
    enter(*this, "INPUT \"N\",A,C:B=9");
    EXPECT_EQ(display(), "N?");
    enter(*this, "3*");
    EXPECT_EQ(display(), "ERR2");
    press(*this, HOME);
    EXPECT_EQ(display(), "?");
    enter(*this, "5");
    tick(5);
    EXPECT_EQ(m.run_state, STATE_COMMAND);
    EXPECT_EQ(number('A'), 5);
    EXPECT_EQ(number('B'), 0) << "the rest is dropped";
    enter(*this, "PRINT 5:INPUT A$");
    enter(*this, "TEXT");
    EXPECT_EQ(says("A$"), "TEXT");
    start("INPUT A$:PRINT A$");
    wait();
    enter(*this, "987");
    wait();
    exe();
    tick(3);
    EXPECT_EQ(says("4"), "4") << "a program's entry is no beginning of a command line either";
}

TEST_F(CommandMode, EndsEndlessLoops) {
    enter(*this, "A=0:FOR I=5 TO 1 STEP 0:A=A+1:NEXT I");
    EXPECT_EQ(m.run_state, STATE_COMMAND);
    EXPECT_EQ(number('A'), 9999) << "20,000 statements";
    load_program("A=0\nPRINT \"X\";:GOTO 20");
    enter(*this, "GOTO 20");
    EXPECT_EQ(m.run_state, STATE_PRINT_WAIT);
    EXPECT_EQ(display(), "X");
}

TEST_F(CommandMode, DropsTheFramesOfAnEarlierLine) {
    load_program("A=5:RETURN\nB=6\nRETURN");
    expect(R"(
        FOR I=1 TO 5 ->   NEXT I -> ERR7 NEXT 0      GOSUB 10:A+1 -> 6
        GOSUB 20:A=1 ->   B -> 6                     RETURN -> ERR7 RETURN 0
    )");
    EXPECT_EQ(m.gosub_depth, 0);
}

TEST_F(CommandMode, RunsThePrograms) {
    load("[P0]\n10 READ A:PRINT A\n20 PRINT \"P0\"\n30 DATA 4,5\n[P2]\n10 PRINT \"P2\"\n");
    load_program("");
    expect("RESTORE:READ B:FOR I=1 TO 2 ->  RUN 15 -> ERR2 RUN 1[15]  RUN A -> ERR2 RUN 0");
    const std::vector<std::string> shown[] = {{" 4", "P0"}, {"P0"}, {"P2"}};
    for (int i = 0; i < 3; ++i) {
        m.run_page = i == 2 ? 2 : 0;
        enter(*this, i == 1 ? "RUN 20:A=99" : "RUN:A=99");
        EXPECT_EQ(m.for_depth, 0);
        EXPECT_EQ(run_through(), shown[i]) << "with the first DATA item";
        EXPECT_EQ(number('A') * 10 + number('B'), 44) << "variables stay; what follows RUN is dropped";
        exe();
    }
    m.run_page = 5;
    load_program("");
    EXPECT_EQ(says("RUN"), "") << "an area without a program";
    EXPECT_EQ(m.base_state, STATE_COMMAND);
}

TEST_F(CommandMode, CalculatesWhileAProgramIsStopped) {
    start("FOR I=1 TO 2:A=I*10:STOP:B=B+A\nNEXT I\nPRINT B");
    wait();
    press(*this, HOME);
    expect(R"(
        A+1 -> 11   PRINT "LIST";I -> LIST1   FOR J=1 TO 3:C=C+J:NEXT J:C -> 6   FOR J=1 TO 3 ->
        1/0 -> ERR3 SYSTEM 5   A=100 ->
    )");
    enter(*this, "INPUT D");
    enter(*this, "4");
    exe(); // on an empty line: on with the program
    wait();
    EXPECT_EQ(m.run_state, STATE_STOPPED);
    EXPECT_EQ(number('B') + number('I'), 102);
    press(*this, HOME);
    exe();
    wait();
    EXPECT_EQ(display(), " 120");
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
        EXPECT_EQ(number('A') * 100 + number('B') * 10 + number('C'), 561) << line;
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
