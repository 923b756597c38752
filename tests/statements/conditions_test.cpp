// IF with THEN and with ";": what runs, what is skipped, what jumps.
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct Row {
    const char* program;
    const char* expected;
};

TEST(Conditions, ChooseWhatRuns) {
    const Row rows[] = {
        // the ";" form runs the rest of the line or skips it
        {"A=1:IF A=1;PRINT \"X\";:B=2\nPRINT B", "X 2"},
        {"A=2:IF A=1;PRINT \"X\";:B=2\nPRINT B", " 0"},
        {"IF 0.5;PRINT \"X\"\nPRINT \"Y\"", "X|Y"},
        {R"(IF -1;PRINT "X")", "X"},
        {R"(IF 0;PRINT "X")", ""},
        {"IF 1;30\nPRINT \"Y\":END\nPRINT \"Z\"", "Y"}, // it never jumps
        {R"(A=5:IF A>3;IF A<9;PRINT "X")", "X"},
        {"A=9:IF A>3;IF A<9;PRINT \"X\"\nPRINT \"Y\"", "Y"},
        // THEN with a number jumps
        {"A=1:IF A=1 THEN 30\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        {"A=2:IF A=1 THEN 30:PRINT \"X\"\nPRINT \"Y\":END\nPRINT \"Z\"", "Y"},
        {"IF 1 THEN 10+20\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        {"IF 1 THEN 29.9999999\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        {"A=30:IF 1 THEN A=5\nPRINT \"Y\":END\nPRINT A", " 30"}, // the value of A is a line number
        {"IF 1 THEN #1:PRINT \"X\"\n[P1]\n10 PRINT \"P1\"", "P1"},
        {"IF 0 THEN #1\nPRINT \"Y\"\n[P1]\n10 PRINT \"P1\"", "Y"},
        {"IF (1 THEN 30\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        // THEN with a statement runs it, once, and what follows
        {"A=3:IF A THEN PRINT A", " 3"},
        {"IF A THEN PRINT A\nPRINT \"Y\"", "Y"},
        {"IF 1 THEN PRINT 1;:PRINT 2", " 1 2"},
        {"IF 1 THEN LET A=5:PRINT A", " 5"},
        {R"(IF 1 THEN A$="X":PRINT A$)", "X"},
        {R"(IF 1 THEN $="XY":PRINT $)", "XY"},
        {"IF 1 THEN GOTO 30\nPRINT \"Y\"\nPRINT \"Z\"", "Z"},
        {"IF 1 THEN GOSUB 30:PRINT \"REST\"\nEND\nPRINT \"SUB\":RETURN", "SUB|REST"},
        {"GOSUB 20:PRINT \"REST\":END\nIF 1 THEN RETURN\nPRINT \"Z\"", "REST"},
        {R"(FOR I=1 TO 3:PRINT I;:IF 1 THEN NEXT I:PRINT "/")", " 1 2 3/"},
        {R"(IF 1 THEN FOR I=1 TO 2:PRINT I;:NEXT I:PRINT "/")", " 1 2/"},
        {"IF 1 THEN IF 0 THEN PRINT \"X\"\nPRINT \"Y\"", "Y"},
        {R"(IF 1 THEN IF 1 THEN PRINT "X")", "X"},
        {"IF 1 THEN IF 1 THEN 30\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        {"IF 1 THEN ON 1 GOTO 30\nPRINT \"Y\":END\nPRINT \"Z\"", "Z"},
        {R"(IF 1 THEN END:PRINT "X")", ""},
        {"IF 1 THEN REM PRINT \"X\"\nPRINT \"Y\"", "Y"},
        {R"(IF 1 THEN DATA 5:PRINT "X")", "X"},
        {R"(IF 1 THEN BREAKA PRINT "X")", "X"},
        {"IF 1 THEN\nPRINT \"Y\"", "Y"},
        {R"(IF 1 THEN:PRINT "X")", "X"},
        // relations; they compare to six decimals, strings by the machine's order
        {R"(IF 2>1 THEN PRINT "X")", "X"},
        {R"(IF 1>=1 THEN PRINT "X")", "X"},
        {"IF 1<>1 THEN PRINT \"X\"\nPRINT \"Y\"", "Y"},
        {R"(IF 1.0000001=1 THEN PRINT "X")", "X"},
        {"IF 1.000001=1 THEN PRINT \"X\"\nPRINT \"Y\"", "Y"},
        {R"(A=5:IF A==5 THEN PRINT "X")", "X"},
        {R"(A$="AB":IF A$="AB" THEN PRINT "X")", "X"},
        {R"(A$="A":IF A$+"B"="AB" THEN PRINT "X")", "X"},
        {R"(IF "+"<"!";PRINT "X")", "X"},
        {"IF \"A\" THEN PRINT \"X\"\nPRINT \"Y\"", "Y"}, // a string is no truth
        {"A=1:IF A=1;A=2:PRINT A", " 2"},                // behind the condition "=" assigns again
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(shown_by(row.program), row.expected);
    }
}

TEST(Conditions, RunTheStatementBehindThenOnTheNextTick) {
    TestMachine t;
    t.start("IF 1 THEN GOSUB 30:A=1\nEND\nB=1:RETURN");
    t.tick();
    EXPECT_EQ(t.m.gosub_depth, 0);
    EXPECT_EQ(moment(t), "run 0 0 []");
    t.tick();
    EXPECT_EQ(t.m.gosub_depth, 1);
    t.tick(3);
    EXPECT_EQ(t.m.gosub_depth, 0);
    EXPECT_EQ(t.m.variables[0].number, 1);
}

TEST(Conditions, Fail) {
    const Row rows[] = {
        {"IF 1", "ERR2 P0-10 IF 0 : 0xffffffff (TOKEN_ID)"},
        {"IF 1:PRINT 1", "ERR2 P0-10 IF 0 : 0xfffffffe (TOKEN_ID)"},
        {"IF 0:PRINT 1", "ERR2 P0-10 IF 0 : 0xfffffffe (TOKEN_ID)"},
        {"IF 1,2", "ERR2 P0-10 IF 0 : 0x002c (TOKEN_ID)"},
        {"IF A=1)PRINT 1", "ERR2 P0-10 IF 0 : 0x0029 (TOKEN_ID)"},
        {"IF 1=1 2", "ERR2 P0-10 IF 0 : 0x0001 (TOKEN_ID)"},
        {"IF 1<2<3 THEN 10", "ERR2 P0-10 IF 0 : 0x003c (TOKEN_ID)"}, // one relation, no more
        {"IF 1 2 THEN 10", "ERR2 P0-10 SYSTEM 4:0x0001 (TOKEN_ID)"},
        {"IF 1 GOTO 10", "ERR2 P0-10 SYSTEM 4:0x0205 (TOKEN_ID)"},
        {"IF A= THEN 10", "ERR2 P0-10 SYSTEM 4:0x0209 (TOKEN_ID)"},
        {"IF A=", "ERR2 P0-10 SYSTEM 30"},
        {R"(IF "A"=1 THEN 10)", "ERR2 P0-10 SYSTEM 32"},
        {"IF 1/0 THEN 10", "ERR3 P0-10 SYSTEM 5"},
        {"IF 1 THEN 99", "ERR4 P0-10 GOTO 5[99]"},
        {"A=77:IF 1 THEN A=5", "ERR4 P0-10 GOTO 5[77]"},
        {"IF 1 THEN #5", "ended GOTO 3[5]"},
        {"IF 1 THEN #10", "ERR5 P0-10 GOTO 2[10]"},
        {"IF 1 THEN #A$", "ERR2 P0-10 GOTO 1"},
        {"IF 1 THEN DIM A(5)", "ERR2 P0-10 SYSTEM 4:0x022b (TOKEN_ID)"},
        {"IF 1 THEN 1/0", "ERR3 P0-10 SYSTEM 5"},
        {"A=1;B=2", "ERR2 P0-10 SYSTEM 4:';'"},
        {"A=1 THEN 10", "ERR2 P0-10 SYSTEM 4:'THEN'"},
        {"THEN 10", "ERR2 P0-10 SYSTEM 4:0x0209 (TOKEN_ID)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(failure_of(row.program), row.expected);
    }
}

} // namespace
} // namespace quillon::testing
