// FOR and NEXT: how often a body runs, which loops stay open, and every fault.
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct Row {
    const char* program;
    const char* expected;
};

TEST(Loops, RunTheirBody) {
    const Row rows[] = {
        {R"(FOR I=1 TO 3:PRINT I;:NEXT I:PRINT "/";I)", " 1 2 3/ 4"},
        {R"(FOR I=1 TO 3:PRINT I;:NEXT:PRINT "/";I)", " 1 2 3/ 4"},
        {"FOR I=1 TO 3\nPRINT I;\nNEXT I\nPRINT \"/\";I", " 1 2 3/ 4"},
        {"FOR I=1 TO 3\nPRINT I;:NEXT I:PRINT \"/\"", " 1 2 3/"},
        {R"(FOR I=1 TO 0:PRINT I;:NEXT I:PRINT "/";I)", " 1/ 2"},
        {R"(FOR I=3 TO 1 STEP -1:PRINT I;:NEXT I:PRINT "/";I)", " 3 2 1/ 0"},
        {R"(FOR I=1 TO 2 STEP 0.5:PRINT I;:NEXT I:PRINT "/")", " 1 1.5 2/"},
        {R"(FOR I=0 TO 10 STEP 4:PRINT I;:NEXT I:PRINT "/";I)", " 0 4 8/ 12"},
        {R"(A=2:FOR I=A*2 TO A+4 STEP A/2:PRINT I;:NEXT I:PRINT "/")", " 4 5 6/"},
        {R"(FOR I=(1 TO (2:PRINT I;:NEXT I:PRINT "/")", " 1 2/"},
        // the cell is any variable, a subscripted one too; its number may be changed within the loop
        {R"(FOR A(30)=1 TO 2:PRINT A(30);:NEXT A(30):PRINT "/")", " 1 2/"},
        {R"(FOR B(0)=1 TO 2:PRINT B;:NEXT A(1):PRINT "/")", " 1 2/"},
        {R"(FOR I=1 TO 9:I=I*2:PRINT I;:NEXT I:PRINT "/";I)", " 2 6 14/ 15"},
        // limit and step are those of the FOR
        {R"(A=2:FOR I=1 TO A:A=9:PRINT I;:NEXT I:PRINT "/")", " 1 2/"},
        {R"(I$="X":FOR I=1 TO 2:NEXT I:PRINT I)", " 3"},
        // the direction is that of the step rounded to six decimals, the test itself is exact
        {R"(FOR I=1 TO 5 STEP 0:PRINT I;:NEXT I:PRINT "/")", " 1/"},
        {R"(FOR I=1 TO 2 STEP 0.0000001:PRINT I;:NEXT I:PRINT "/")", " 1/"},
        {"FOR I=0 TO 0.9999999 STEP 1:A=A+1:NEXT I:PRINT A", " 1"},
        {"FOR I=5 TO 1 STEP 0:A=A+1:IF A=4 THEN PRINT I:END\nNEXT I", " 5"},
        // nesting; a loop that is taken up again drops those inside it
        {R"(FOR I=1 TO 2:FOR J=1 TO 2:PRINT I*10+J;:NEXT J:NEXT I:PRINT "")", " 11 12 21 22"},
        {"FOR I=1 TO 2:FOR J=1 TO 3:A=A+1:NEXT I:PRINT A;J", " 2 1"},
        {"FOR I=1 TO 2:FOR J=1 TO 3:NEXT:NEXT:PRINT I;J", " 3 4"},
        {"FOR I=1 TO 2:FOR J=1 TO 2:FOR K=1 TO 2:FOR L=1 TO 2:A=A+1:NEXT:NEXT:NEXT:NEXT:PRINT A", " 16"},
        {"FOR I=1 TO 4\nA=A+1:IF A<20 THEN 10\nPRINT A", " 20"},
        // one NEXT for two loops, one in a subroutine
        {"FOR I=1 TO 3:GOSUB 30\nPRINT I:END\nPRINT I;:NEXT I\nRETURN", " 1 2 3 4"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(shown_by(row.program), row.expected);
    }
}

TEST(Loops, KeepTheFrameOfAnOpenVariable) {
    TestMachine t;
    t.start("FOR I=1 TO 2:FOR J=1 TO 3:FOR K=1 TO 4:FOR L=1 TO 5\nFOR J=7 TO 8 STEP 2\nFOR M=1 TO 2");
    t.tick(4);
    EXPECT_EQ(t.m.for_depth, 4);
    t.tick();
    EXPECT_EQ(t.m.for_depth, 2) << "K and L lie inside J";
    EXPECT_EQ(t.m.for_frames[1].limit, 8);
    EXPECT_EQ(t.m.for_frames[1].step, 2);
    EXPECT_EQ(t.m.for_frames[1].line, 1);
    EXPECT_EQ(t.m.for_frames[0].limit, 2);
    t.tick();
    EXPECT_EQ(t.m.for_depth, 3);
}

TEST(Loops, KeepFourLoopsWhenAFifthIsRefused) {
    TestMachine t;
    t.start("FOR I=1 TO 2:FOR J=1 TO 2:FOR K=1 TO 2:FOR L=1 TO 2:FOR M=7 TO 9");
    t.tick(5);
    EXPECT_EQ(t.display(), "ERR7 P0-10");
    EXPECT_EQ(t.m.for_depth, FOR_DEPTH_MAX);
    EXPECT_EQ(t.m.for_frames[3].variable, &t.m.variables['L' - 'A']);
    EXPECT_EQ(t.m.variables['M' - 'A'].number, 7) << "the start value has been stored";
}

TEST(Loops, StayOpenBesideAnEndlessStep) {
    TestMachine t;
    t.start("FOR I=5 TO 1 STEP 0:A=A+1:NEXT I");
    t.tick(2001);
    EXPECT_EQ(t.m.variables[0].number, 1000);
    EXPECT_EQ(t.m.variables['I' - 'A'].number, 5);
}

TEST(Loops, Fail) {
    const Row rows[] = {
        {"FOR 5=1 TO 3", "ERR2 P0-10 FOR 0"},
        {"FOR A$=1 TO 3", "ERR2 P0-10 FOR 0"},
        {"FOR", "ERR2 P0-10 FOR 0"},
        {"FOR =1 TO 3", "ERR2 P0-10 FOR 0"},
        {"FOR AB=1 TO 3", "ERR2 P0-10 FOR 0"},
        {"FOR A(300)=1 TO 3", "ERR2 P0-10 FOR 0"},
        {"FOR A(1/0)=1 TO 3", "ERR3 P0-10 SYSTEM 5"},
        {"FOR I 1 TO 3", "ERR2 P0-10 FOR 1"},
        {"FOR I==1 TO 3", "ERR2 P0-10 FOR 1"},
        {"FOR I", "ERR2 P0-10 FOR 1"},
        {"FOR I=A$ TO 3", "ERR6 P0-10 FOR 2"},
        {R"(A$="X":FOR I=A$ TO 3)", "ERR6 P0-10 FOR 2"},
        {R"(A$="X":FOR I=A TO 3)", "ERR6 P0-10 FOR 3"},
        {R"(FOR I="X" TO 3)", "ERR2 P0-10 FOR 3"},
        {"FOR I=", "ERR2 P0-10 FOR 3"},
        {"FOR I=1", "ERR2 P0-10 FOR 4 : 0xffffffff (TOKEN_ID)"},
        {"FOR I=1:TO 3", "ERR2 P0-10 FOR 4 : 0xfffffffe (TOKEN_ID)"},
        {"FOR I=1,3", "ERR2 P0-10 FOR 4 : 0x002c (TOKEN_ID)"},
        {"FOR I=1 STEP 2 TO 3", "ERR2 P0-10 FOR 4 : 0x021f (TOKEN_ID)"},
        {"FOR I=1 TO 3 5", "ERR2 P0-10 FOR 4 : 0x0001 (TOKEN_ID)"},
        {"FOR I=1 TO 3 STEP 1,2", "ERR2 P0-10 FOR 4 : 0x002c (TOKEN_ID)"},
        {"FOR I=1 TO 3 STEP 1 TO 4", "ERR2 P0-10 FOR 4 : 0x021e (TOKEN_ID)"},
        {"FOR I=1 TO A$", "ERR2 P0-10 FOR 5"},
        {R"(A$="X":FOR I=1 TO A)", "ERR6 P0-10 FOR 6"},
        {R"(FOR I=1 TO "X")", "ERR2 P0-10 FOR 6"},
        {"FOR I=1 TO", "ERR2 P0-10 FOR 6"},
        {"FOR I=1 TO 3 STEP A$", "ERR2 P0-10 FOR 7"},
        {R"(A$="X":FOR I=1 TO 3 STEP A)", "ERR6 P0-10 FOR 8"},
        {R"(FOR I=1 TO 3 STEP "X")", "ERR2 P0-10 FOR 8"},
        {"FOR I=1 TO 3 STEP", "ERR2 P0-10 FOR 8"},
        {"FOR A=1 TO 2:FOR B=1 TO 2:FOR C=1 TO 2:FOR D=1 TO 2:FOR E=1 TO 2", "ERR7 P0-10 FOR 9 [MAX:4]"},
        {"FOR I=1/0 TO 3", "ERR3 P0-10 SYSTEM 5"},
        {"FOR I=1 TO 1/0", "ERR3 P0-10 SYSTEM 5"},
        {"FOR I=1 TO 2 STEP 1/0", "ERR3 P0-10 SYSTEM 5"},
        {"NEXT", "ERR7 P0-10 NEXT 0"},
        {"NEXT 5", "ERR7 P0-10 NEXT 0"},
        {"FOR I=1 TO 1:NEXT I:NEXT I", "ERR7 P0-10 NEXT 0"},
        {"FOR I=1 TO 3:NEXT 5", "ERR2 P0-10 NEXT 1 : 0x0001 (TOKEN_ID)"},
        {"FOR I=1 TO 3:NEXT I$", "ERR2 P0-10 NEXT 1 : 0x0005 (TOKEN_ID)"},
        {"FOR I=1 TO 3:NEXT I,J", "ERR2 P0-10 NEXT 1 : 0x002c (TOKEN_ID)"},
        {"FOR I=1 TO 3:NEXT I 5", "ERR2 P0-10 NEXT 1 : 0x0001 (TOKEN_ID)"},
        {R"(FOR I=1 TO 3:I$="X":NEXT I)", "ERR2 P0-10 NEXT 2"},
        {"FOR I=1 TO 3:NEXT J", "ERR7 P0-10 NEXT 3"},
        {"FOR I=1 TO 3:NEXT A(1/0)", "ERR3 P0-10 SYSTEM 5"},
        {"FOR I=1 TO 3:NEXT A(300)", "ERR2 P0-10 NEXT 1 : 0xfffffff1 (TOKEN_ID)"},
        {"FOR H=1 TO 3:FOR I=1 TO 1:FOR J=1 TO 3:NEXT I:NEXT J", "ERR7 P0-10 NEXT 3"},
        {"FOR I=1 TO 3:GOTO #1\n[P1]\n10 NEXT I", "ERR7 P1-10 NEXT 4"},
        {"FOR I=1 TO 3:GOTO #1\n[P1]\n10 NEXT", "ERR7 P1-10 NEXT 4"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(failure_of(row.program), row.expected);
    }
}

TEST(Loops, StoreTheStartBeforeTheyRefuseTheLimit) {
    for (const char* program : {"FOR I=7 TO A$", R"(FOR I=7 TO 9 STEP "X")", "FOR I=7 TO 9 9"}) {
        TestMachine t;
        t.start(program);
        t.tick();
        EXPECT_EQ(t.m.variables['I' - 'A'].number, 7) << program;
        EXPECT_EQ(t.m.for_depth, 0) << program;
    }
}

} // namespace
} // namespace quillon::testing
