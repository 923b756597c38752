// Expressions: precedence, operand kinds, strings, the range of factors, nesting, and the errors of all levels.
#include "core/interpreter.h"

#include "core/variables.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// B is 2, C is -3, X$ is TEXT, $ is DOLLAR; everything else was never assigned.
class Evaluator : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    void SetUp() override {
        store_number(m.variables[1], 2);
        store_number(m.variables[2], -3);
        store_string(m.variables[23], "TEXT");
        store_string(dollar_var(m), "DOLLAR");
    }

    /// Every line: an outcome, and the expressions that have it.
    void check(std::string_view outcomes, int kind = KIND_NONE) {
        for (const Case& row : cases(outcomes)) {
            EXPECT_EQ(outcome_of(m, row.text, kind), row.outcome) << row.text;
            EXPECT_EQ(m.nesting_depth, 0) << row.text;
        }
    }
};

TEST_F(Evaluator, Numbers) {
    check(R"(
        14     2+3*4
        20     (2+3)*4
        64     2^3^2
        4      -2^2    -INT-3.2   -2*-2     INT 4.9
        0.5    2^-1
        2      8/2/2   10-4-4     INT 2.7   SGN 5+1
        18     2*3^2
        2001   1+2EX3
        1000   1 EX 3  1EX3       1ex3
        0.05   5 EM 2
        200    2EX1EX1
        0.2    2EX-1
        5      +5      --5        -+-+5     3--2       5+-      B+3     5.      0+&H5
        -6     3*-2    b*c        B * C     2*-ABS-3   INT-5.5
        7      ((((7))))          INT(3.7)*2+1
        -1     (B)+(C)            SGN C     -SGN B
        3      -C      ABS C      INT ABS-3.7
        0      A       A*B        0/5       SGN A      Z(100)
        3.141592654    PI         pi        (PI)
        5      (2+3    ((2+3
        14     2*(3+4
        2      (B      (B:     INT(2.5
        1      (B==2   (X$=="TEXT"     (C<(B
    )");
    EXPECT_EQ(outcome_of(m, "1\2153"), "1000") << "EX as a character";
    EXPECT_EQ(outcome_of(m, "5\2342"), "0.05") << "EM as a character";
    EXPECT_EQ(outcome_of(m, "\207*2"), "6.283185307");
    EXPECT_EQ(shown_by("A=1:IF (A THEN 30\nEND\nFOR I=(A TO 3:NEXT I:PRINT I"), " 4");
}

TEST_F(Evaluator, Strings) {
    check(R"(
        'AB'             "AB"            "A"+"B"
        ''               ""              A$        B$        A$+B$
        'ABC'            ("A"+"B")+"C"   "A"+("B"+"C")       "ABC"+A$
        'TEXT'           X$              (X$)      A$+X$     ""+X$
        'TEXT1'          X$+"1"
        'DOLLARDOLLAR'   $+$
        'ABTEXTDOLLAR'   "A"+"B"+X$+$
    )");
    const std::string text(100, 'x');
    EXPECT_EQ(outcome_of(m, "\"" + text + "\"+\"" + text + "\""), "'" + std::string(127, 'x') + "'");
}

TEST_F(Evaluator, Relations) {
    check(R"(
        1   1<2      2>1     1!=2    1<>2    2>=2    3>=2    2<=2    1<=2    2==2    1+1==4/2    1.0000001==1
        0   2<1      2<2     1>1     1>2     1<>1    1!=1    2>=3    3<=2    2==3    0.123456==0.123457
        1   0.1234561==0.1234564     "ABC"<"ABD"     "+"<"!"     "!"<"A"     "a">"Z"     ""==""
        1   X$=="TEXT"   "TE"+"XT"==X$   X$+$=="TEXTDOLLAR"      X$=="TE"+"XT"   ("A"+"B")+"C"=="ABC"
        1   A$==""       B$==""          B$<"A"      1<2 3       1<2;            1<2<3
    )");
    check(R"(
        1   1=1     X$="TEXT"    A$+B$=""    B=2;    B<3 THEN    B<C+9 THEN 5
        0   B=3     X$+$="X"     A$="X"
        2   B;      B THEN       (B THEN
    )",
          KIND_CONDITION);
    EXPECT_EQ(m.variables[1].number, 2) << "in a condition nothing is assigned";
}

TEST_F(Evaluator, OperatorErrors) {
    check(R"(
        ERR2 SYSTEM 30   1+   1-:  1*   1/   1^   1EX  1EM  1<   1==  "A"+   "A"<   X$==:
        ERR6 SYSTEM 32   "A"+1     1+"A"     A$+1      1+A$   "A"+PI
        ERR2 SYSTEM 39   "A"-"B"   1-X$      X$-1      "A"*2  2*"A"  A$/2  "A"^2  2^"A"  2 EX "A"  "A"EM 2
        ERR2 SYSTEM 32   1<"A"     "A"==1    A$<>1     B>=X$
        ERR3 SYSTEM 5    1/0       1/A       0/0       1/(B-2)
        ERR6 SYSTEM 32   X+1    1+X
        ERR2 SYSTEM 39   X-1    X*2    2^X
        ERR2 SYSTEM 32   X<1    1==X
        0                X      X=="T"
        1                X=="TEXT"     "TEXT"==X    X$==X
        'ATEXT'          "A"+X
        10000000         1/0.0000001
        ERR2 INT 0       INT       INT:
        ERR2 INT 1       INT"A"    INT X$
    )");
}

TEST_F(Evaluator, WordsAndTokensThatDoNotBelong) {
    check(R"(
        ERR2 SYSTEM 4:"foo"                FOO      1+Foo    (FOO     "A"+foo
        ERR2 SYSTEM 4:"foo$"               FOO$
        ERR2 SYSTEM 7                      1.5.2    1+1.5.2
        ERR2 SYSTEM 4                      "\zz"    1+"\zz"  #5       1+#
        ERR2 SYSTEM 4:"&"                  &G       1+&
        ERR2 SYSTEM 4:'#'                  5#
        ERR2 SYSTEM 4:';'                  5;       ;
        ERR2 SYSTEM 4:'THEN'               5 THEN
        ERR2 SYSTEM 4:0x0209 (TOKEN_ID)    THEN
        ERR2 SYSTEM 4:0x000e (TOKEN_ID)    2 MOD 3  MOD
        ERR2 SYSTEM 4:0x0117 (TOKEN_ID)    EX 3     1+EX
        ERR2 SYSTEM 4:0x011e (TOKEN_ID)    EM
        ERR2 SYSTEM 4:0x007c (TOKEN_ID)    |        1|2
        ERR2 SYSTEM 4:0x003d (TOKEN_ID)    =5
        ERR2 SYSTEM 4:0x002a (TOKEN_ID)    *5       1**5
        ERR2 SYSTEM 4:0x003c (TOKEN_ID)    <5
        ERR2 SYSTEM 4:0x0029 (TOKEN_ID)    )        ()       1+)
        ERR2 SYSTEM 4:0x002c (TOKEN_ID)    ,
        ERR2 SYSTEM 4:0x0001 (TOKEN_ID)    5 5      A1       "A"5
        ERR2 SYSTEM 4:0x0006 (TOKEN_ID)    5"A"
        ERR2 SYSTEM 4:0x0003 (TOKEN_ID)    B C      1E5
        ERR2 SYSTEM 4:0x0101 (TOKEN_ID)    5 SIN
        5                                  5)       5,       5:FOO    5 STOP   5 END
    )");
    check("0  #5\n5  5#", KIND_JUMP);
    check(R"(
        ERR2 SYSTEM 50:0x0220 (TOKEN_ID)   REM      1+REM
        ERR2 SYSTEM 4:';'                  1+;      ;
        1                                  1;
    )",
          KIND_PRINT);
    EXPECT_EQ(outcome_of(m, ""), "0");
    EXPECT_EQ(outcome_of(m, "5\240"), "ERR2 SYSTEM 4:0x00a0 (TOKEN_ID)");
}

TEST_F(Evaluator, BytesThatAreNoCharactersAreUnknownTokens) {
    for (int byte = 1; byte < 32; ++byte) {
        if (byte == '\t' || byte == '\n' || byte == '\r' || byte == 27)
            continue;
        EXPECT_EQ(outcome_of(m, std::string(1, static_cast<char>(byte))), "ERR2 SYSTEM 4:0x0000 (TOKEN_ID)") << byte;
    }
}

TEST_F(Evaluator, AFactorLiesInTheMachinesRange) {
    store_number(m.variables[3], 1e200);
    check(R"(
        1e-100   1EX-100
        1e-99    (1EX-99)
        1e+100   (1EX100)
        1e+200   10^200
        0        (0)       (1-1)
        ERR3 SYSTEM 6:(1*10^-99 <= |N| < 1*10^100)   (1EX-100)   0+(1EX-100)   (1EX100*1.01)   -(1EX101)   D   -D
        ERR3 SYSTEM 6:(1*10^-99 <= |N| < 1*10^100)   INT(10^200)   ((0-1)^0.5)   (9^999)   ABS(-1EX-100)   1+(10^101
    )");
    EXPECT_EQ(outcome_of(m, "&H" + std::string(300, 'F')).substr(0, 13), "ERR3 SYSTEM 6");
}

TEST_F(Evaluator, TheOperandRecordSurvivesTheTokenBehindIt) {
    // The expression, and its record: kind, number, whether it was computed.
    const char* const rows = R"(
        B      3 2 0     (B)   3 2 0     B*C   3 -6 1    1+B   1 3 1    5         1 5 0    2EX2   1 200 1
        -B     3 -2 1    B+1   3 3 1     B^2   3 4 1     1*B   1 2 1    -5        1 -5 1   INT 2.5   1 2 1
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 2) {
            outcome_of(m, row[i]);
            char record[64];
            std::snprintf(record, sizeof record, "%d %g %d", static_cast<int>(m.value.kind), m.value.number,
                          m.value.complete);
            EXPECT_EQ(record, row[i + 1]) << row[i];
            EXPECT_EQ(m.operand_done, 1) << row[i];
        }
    }
    for (const char* statement : {"E=1", "1<2", "PASS", "PRINT 1"}) {
        m.operand_done = 1;
        outcome_of(m, statement);
        EXPECT_EQ(m.operand_done, 0) << statement;
    }
}

std::string repeated(const char* part, int count) {
    std::string text;
    while (count-- > 0)
        text += part;
    return text;
}

TEST_F(Evaluator, NestsDeeplyButNotWithoutBound) {
    struct Nest {
        const char* open;
        const char* close;
        const char* outcome_of_32;
    };
    const Nest rows[] = {{"(", ")", "1"},    {"(", "", "1"},   {"-", "", "1"},   {"+", "", "1"},   {"ABS ", "", "1"},
                         {"INT(", ")", "1"}, {"D(", ")", "0"}, {"(-", ")", "1"}, {"1^(", ")", "1"}};
    for (const Nest& row : rows) {
        for (const int depth : {32, 256, 30000}) {
            const std::string outcome = outcome_of(m, repeated(row.open, depth) + "1" + repeated(row.close, depth));
            const std::string expected = depth == 32 ? row.outcome_of_32 : "ERR2 SYSTEM 4:0x";
            EXPECT_EQ(outcome.substr(0, expected.size()), expected) << row.open;
            EXPECT_EQ(m.nesting_depth, 0) << row.open;
        }
    }
    for (int i = 0; i < 200; ++i)
        outcome_of(m, "((((((FOO");
    EXPECT_EQ(outcome_of(m, repeated("(", 32) + "1"), "1") << "after errors the depth is counted afresh";
}

} // namespace
} // namespace quillon::testing
