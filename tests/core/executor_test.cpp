// Assignments, and how a statement ends.
#include "core/interpreter.h"

#include "core/variables.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// N holds 9, S holds TEXT; the other cells were never assigned.
class Executor : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    void SetUp() override { set_cells(); }

    void set_cells() {
        clear_variables(m);
        store_number(cell('N'), 9);
        store_string(cell('S'), "TEXT");
    }

    Variable& cell(char letter) { return letter == '$' ? dollar_var(m) : *variable_cell(m, letter - 'A', 0); }

    /// What a cell holds: "none", "5" or "'AB'".
    std::string held(char letter) {
        const Variable& variable = cell(letter);
        if (variable.kind == 1)
            return variable.number == 0 ? "'" + std::string(variable.text.view()) + "'" : "both";
        char text[32];
        std::snprintf(text, sizeof text, "%.10g", variable.number);
        return variable.kind < 0 ? "none" : variable.text.empty() ? text : "both";
    }
};

TEST_F(Executor, AssignmentsThatStore) {
    // The statement, its number (0 for a string), the cell, and what that holds afterwards.
    const char* const rows = R"(
        A=5                   5      A   5
        a = 1+2*3             7      A   7
        A=N                   9      A   9
        A=-N                  -9     A   -9
        A=N+1                 10     A   10
        A=U                   0      A   0
        (A)=5                 5      A   5
        ((A)=5                5      A   5
        S=5                   5      S   5
        A=10^200              1e+200  A  1e+200
        A=5:B=6               5      B   none
        A(2)=7                7      C   7
        A$(2)="X"             0      C   'X'
        LET A=5               5      A   5
        LET A$="AB"           0      A   'AB'
        LET A(1)=5            5      B   5
        A$="AB"               0      A   'AB'
        A$="ABCDEFGHIJ"       0      A   'ABCDEFG'
        A$=("ABCDEFGHIJ")     0      A   'ABCDEFG'
        A$="ABCDEFGHIJ"+""    0      A   'ABCDEFGHIJ'
        A$=""+"ABCDEFGHIJ"    0      A   'ABCDEFGHIJ'
        A$="123456789012345678901234567890"+"1234"   0   A   '1234567890123456789012345678901'
        $="123456789012345678901234567890123"        0   $   '123456789012345678901234567890'
        $="123456789012345678901234567890"+"1234"    0   $   '1234567890123456789012345678901'
        A$=S$                 0      A   'TEXT'
        A$=S$+S$              0      A   'TEXTTEXT'
        $=S$                  0      $   'TEXT'
        A$=$                  0      A   ''
        A$=N$                 0      A   ''
        A$=U$                 0      A   ''
        N$="X"                0      N   'X'
        S$=S$+"X"             0      S   'TEXTX'
    )";
    for (const TableRow& row : table(rows)) {
        set_cells();
        EXPECT_EQ(outcome_of(m, row[0]), row[1]) << row[0];
        EXPECT_EQ(held(row[2][0]), row[3]) << row[0];
        EXPECT_EQ(m.value.complete, 1) << row[0];
        EXPECT_EQ(m.operand_done, 0) << row[0];
    }
}

TEST_F(Executor, AssignmentsThatAreRefusedStoreNothing) {
    const char* const rows = R"(
        ERR2 SYSTEM 37   5=A      9-U=5    U+1=5    -U=5     +U=5     (U+1)=5    (-U)=5    U*1=5    U^1=5    LET U+1=5
        ERR2 SYSTEM 37   PI=3     INT U=5  5="A"    5=U$
        ERR2 SYSTEM 38   "A"=5    "A"="B"  U$+"B"="C"        "A"+U$="C"          (U$+"B")="C"       $+"A"="B"
        ERR6 SYSTEM 33   U=S      U=(S)    U=-S
        ERR2 SYSTEM 33   U=S$     U=N$     U=S$+"X"          U=$
        ERR2 SYSTEM 35   U="X"    U="X"+S$
        ERR2 SYSTEM 34   U$=N     U$=N+1   U$=-N    U$=S     U$=U
        ERR2 SYSTEM 36   U$=1     U$=1+N   U$=INT N          $=5      U$=PI      U$=-1
        ERR2 SYSTEM 30   U=       U=:      U$=      U==
        ERR3 SYSTEM 5    U=1/0
        ERR2 SYSTEM 4:"foo"       U=FOO    U$=FOO   FOO=U
        ERR2 SYSTEM 4:';'         LET 5=1  LET      LET FOO=1         LET "A"="B"          LET PRINT
        ERR6 SYSTEM 40 =Z(197)(MAX:222)    Z(197)=5          U=Z(197)
    )";
    for (const Case& row : cases(rows)) {
        EXPECT_EQ(outcome_of(m, row.text), row.outcome) << row.text;
        EXPECT_EQ(held('U') + held('N') + held('S') + held('A'), "none9'TEXT'none") << row.text;
        set_cells();
    }
}

TEST_F(Executor, TheEndOfAnAssignmentIsCheckedWhenTheValueIsStored) {
    const char* const rows = R"(
        ERR2 SYSTEM 4:';'                      A=1;B=2
        ERR2 SYSTEM 4:'#'                      A=1#
        ERR2 SYSTEM 4:'THEN'                   A=1 THEN
        ERR2 SYSTEM 4:0x0001 (TOKEN_ID)        A=1 2
        ERR2 SYSTEM 4:0x003d (TOKEN_ID)        A=1=2
        ERR2 SYSTEM 4:0x003c (TOKEN_ID)        A=1<2
        ERR2 SYSTEM 4:0xfffffff5 (TOKEN_ID)    A=1 FOO
        1                                      A=1 STOP   A=1 END   A=1)   A=1,
    )";
    for (const Case& row : cases(rows)) {
        set_cells();
        EXPECT_EQ(outcome_of(m, row.text), row.outcome) << row.text;
        EXPECT_EQ(held('A'), "1") << row.text;
        EXPECT_EQ(held('B'), "none") << row.text;
    }
}

TEST_F(Executor, WordsWithoutEffect) {
    for (const char* word :
         {"LIST", "CLEAR", "DEFM", "SAVE", "LOAD", "PUT", "GET", "VER", "VERIFY", "PASS", "DATA", "REM"}) {
        for (const char* rest : {"", " 5", " \"A:B\"", " 1,,;FOO)1.2.3", " A(5,\"\\zz"}) {
            EXPECT_EQ(outcome_of(m, word + std::string(rest)), "0") << word << rest;
            EXPECT_EQ(m.token, TOKEN_END) << word << rest;
            EXPECT_EQ(m.error_detail.view(), "") << word << rest;
        }
        outcome_of(m, word + std::string(" A(B=1):A=1"));
        EXPECT_EQ(m.token, std::string_view(word) == "REM" ? TOKEN_END : TOKEN_COLON) << word;
        EXPECT_EQ(held('B') + held('A'), "nonenone") << "a skipped statement evaluates nothing";
    }
}

TEST_F(Executor, WordsWithoutAHandlerAreUnknownTokens) {
    const char* const rows = R"(
        0x0210  LIST_A   0x0215  CLEAR_A   0x0218  SAVE_A   0x021a  LOAD_A     0x021e  TO
        0x021f  STEP     0x022b  DIM A(5)  0x022c  READ#    0x022d  RESTORE#   0x022e  WRITE#1
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 2)
            EXPECT_EQ(outcome_of(m, row[i + 1]), "ERR2 SYSTEM 4:" + row[i] + " (TOKEN_ID)") << row[i + 1];
    }
}

TEST_F(Executor, CommandModeDropsAnUnknownTokenBehindAnExpression) {
    for (const char* text : {"5 5", "A=5 MOD", "5 FOO", "5 A"}) {
        m.run_state = STATE_COMMAND;
        EXPECT_EQ(outcome_of(m, text), "5") << text;
        EXPECT_EQ(m.token, 0) << text;
    }
    EXPECT_EQ(outcome_of(m, "5;"), "ERR2 SYSTEM 4:';'");
    m.run_state = STATE_COMMAND;
    EXPECT_EQ(outcome_of(m, "MOD"), "ERR2 SYSTEM 4:0x000e (TOKEN_ID)");
}

} // namespace
} // namespace quillon::testing
