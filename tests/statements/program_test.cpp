// The program words (STOP, END, COMMAND, REM, LET), words without an effect, and words that the machine does not have.
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct Row {
    const char* program;
    const char* expected;
};

TEST(ProgramWords, DoTheirWork) {
    const Row rows[] = {
        {"PRINT 1:END:PRINT 2\nPRINT 3", " 1"},
        {"PRINT 1:REM x:PRINT 2\nPRINT 3", " 1| 3"},
        {"REM\nPRINT 3", " 3"},
        {"LET A=5:PRINT A", " 5"},
        {R"(LET A$="X":LET $="YZ":PRINT A$;$)", "XYZ"},
        {"LET A(30)=7:PRINT Z(5)", " 7"},
        {"print 1:Print 2:let a=3:PRINT A", " 1| 2| 3"},
        // accepted without an effect, up to the ":" of the statement
        {"CLEAR:PRINT 1", " 1"},
        {"DEFM 5:PRINT 1", " 1"},
        {R"(SAVE "A:B":PRINT 1)", " 1"},
        {R"(LOAD "A",5 STEP:PRINT 1)", " 1"},
        {"LIST 10,20:PRINT 1", " 1"},
        {"PUT A,B$,$:PRINT 1", " 1"},
        {"GET A(1:PRINT 1", " 1"},
        {"VER:VERIFY 1/0:PRINT 1", " 1"},
        {R"(PASS "SECRET":PRINT 1)", " 1"},
        {R"(DATA 1,AB,"X:Y":PRINT 1)", " 1"},
        {"SAVE A=5\nPRINT A", " 0"},
        {"PASS=5:PRINT 1", " 1"},
        {"PASS", ""},
        // what does nothing
        {"::PRINT 1::", " 1"},
        {R"(A:"X":5:-A:PRINT 1)", " 1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(failure_of(row.program), "ok");
        EXPECT_EQ(shown_by(row.program), row.expected);
    }
}

TEST(ProgramWords, Fail) {
    const Row rows[] = {
        {"LET 5=1", "ERR2 P0-10 SYSTEM 4:';'"},
        {"LET", "ERR2 P0-10 SYSTEM 4:';'"},
        {R"(LET "A"=1)", "ERR2 P0-10 SYSTEM 4:';'"},
        {"LET PRINT", "ERR2 P0-10 SYSTEM 4:';'"},
        {"LET AB=1", "ERR2 P0-10 SYSTEM 4:';'"},
        {"LET A=", "ERR2 P0-10 SYSTEM 30"},
        {R"(LET A="X")", "ERR2 P0-10 SYSTEM 35"},
        {"DIM A(5)", "ERR2 P0-10 SYSTEM 4:0x022b (TOKEN_ID)"},
        {"LIST_A", "ERR2 P0-10 SYSTEM 4:0x0210 (TOKEN_ID)"},
        {"CLEAR_A", "ERR2 P0-10 SYSTEM 4:0x0215 (TOKEN_ID)"},
        {"SAVE_A", "ERR2 P0-10 SYSTEM 4:0x0218 (TOKEN_ID)"},
        {"LOAD_A", "ERR2 P0-10 SYSTEM 4:0x021a (TOKEN_ID)"},
        {"TO 5", "ERR2 P0-10 SYSTEM 4:0x021e (TOKEN_ID)"},
        {"STEP 5", "ERR2 P0-10 SYSTEM 4:0x021f (TOKEN_ID)"},
        {"READ# A", "ERR2 P0-10 SYSTEM 4:0x022c (TOKEN_ID)"},
        {"RESTORE# 1", "ERR2 P0-10 SYSTEM 4:0x022d (TOKEN_ID)"},
        {"WRITE# A", "ERR2 P0-10 SYSTEM 4:0x022e (TOKEN_ID)"},
        {"A=5 MOD 2", "ERR2 P0-10 SYSTEM 4:0x000e (TOKEN_ID)"},
        {"A=5 PRINT A", "ERR2 P0-10 SYSTEM 4:0x0204 (TOKEN_ID)"},
        {"HELLO", R"(ERR2 P0-10 SYSTEM 4:"hello")"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(failure_of(row.program), row.expected);
    }
}

TEST(ProgramWords, TellWhereTheErrorIs) {
    TestMachine t;
    t.m.catalogue.sections["DLG_ERRINFO"] = {{1, "HEAD"}, {2, "AREA"}, {3, "INDEX"},
                                             {4, "LINE"}, {5, "TEXT"}, {6, "END"}};
    t.load("[P2]\n10 A=1\n30 A=A+ 1*2/0:REM ABCDEFGHIJKLMNOPQRSTUVWXYZ\n");
    t.m.run_page = 2;
    play(t, "run 2");
    EXPECT_EQ(t.display(), "ERR3 P2-30");
    EXPECT_EQ(t.m.error_detail.view(), "SYSTEM 5\x01\r\n\r\nHEAD\r\nAREA:2\r\nINDEX:1\r\nLINE:\"30\"\r\n\r\n"
                                       "TEXT\r\n------------------------\r\n::::"
                                       ":REM ABCDEFGHIJKLMNOPQRSTUVWXYZEND\r\n------------------------\r\n");
}

} // namespace
} // namespace quillon::testing
