// GOTO, GOSUB, RETURN and ON: where they lead, and how they fail.
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct Row {
    const char* program;
    const char* expected;
};

/// A program that ends in P0 with lines that tell which of them was reached.
std::string with_marks(std::string_view statements) {
    return "[P0]\n1 " + std::string(statements) +
           "\n2 PRINT \"NEXT\":END\n10 PRINT \"TEN\":END\n11 PRINT \"ELEVEN\":END\n20 PRINT \"TWENTY\":END\n"
           "[P3]\n5 PRINT \"P3\":END\n10 PRINT \"P3-10\":END\n[P4]\n[P9]\n100 PRINT \"P9\"\n200 RETURN\n";
}

std::string shown_from(std::string_view statements) {
    TestMachine t;
    t.load(with_marks(statements));
    play(t, "run");
    std::string joined;
    for (const std::string& line : t.run_through())
        joined += (joined.empty() ? "" : "|") + line;
    return joined;
}

TEST(Jumps, LeadToTheirTarget) {
    const Row rows[] = {
        {"GOTO 10", "TEN"},
        {R"(GOTO 10:PRINT "NEVER")", "TEN"},
        {"A=10:GOTO A", "TEN"},
        {"A=5:GOTO A*2+1", "ELEVEN"},
        {"GOTO (10", "TEN"},
        {"GOTO 10.9999999", "ELEVEN"}, // GOTO rounds to six decimals before it truncates,
        {"GOSUB 10.9999999", "TEN"},   // GOSUB and ON do not
        {"ON 1 GOTO 10.9999999", "TEN"},
        {"GOTO 10.9", "TEN"},
        {"GOTO #3", "P3"},
        {"A=2:GOTO #A+1", "P3"},
        {"GOTO #9.5", "P9|ERR7 P9-200"},
        {"GOTO #3.9999999", "P3"},
        {R"(GOSUB #9:PRINT "BACK")", "P9|BACK|NEXT"},
        {"GOSUB #9.5", "P9|NEXT"},
        {"GOSUB #3", "P3"},
        {"ON 1 GOTO 10,20", "TEN"},
        {"ON 2 GOTO 10,20", "TWENTY"},
        {"ON 2.9 GOTO 10,20", "TWENTY"},
        {"ON 1.9999999 GOTO 10,20", "TEN"},
        {"A=2:ON A-1 GOTO 10,20", "TEN"},
        {R"(ON 0 GOTO 10,20:PRINT "REST")", "NEXT"},
        {R"(ON -1 GOTO 10,20:PRINT "REST")", "NEXT"},
        {"ON 0.9999999 GOTO 10", "NEXT"},
        {R"(ON 3 GOTO 10,20:PRINT "REST")", "NEXT"},
        {"ON 3 GOTO #3,20", "NEXT"},
        {"ON 2 GOTO 99,#3,99", "P3"},
        {"ON 2 GOTO #77,#3", "P3"}, // a target that is passed over need not exist
        {"ON 3 GOTO 99,#8,20", "TWENTY"},
        {"A=4:ON 2 GOTO 10,5*A", "TWENTY"},
        {"ON 1 GOTO 10 20", "TEN"}, // what stands behind the chosen target is not looked at
        {"ON 0 GOSUB 99", "NEXT"},
        {"ON 2 GOSUB 99", "NEXT"},
        {"ON 1 GOSUB #9", "P9|NEXT"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(shown_from(row.program), row.expected);
    }
}

TEST(Jumps, ReturnBehindTheCall) {
    const Row rows[] = {
        {"GOSUB 30:PRINT \"REST\"\nEND\nPRINT \"SUB\":RETURN", "SUB|REST"},
        {"GOSUB 30\nPRINT \"REST\":END\nPRINT \"SUB\":RETURN", "SUB|REST"},
        {"ON 1 GOSUB 30:PRINT \"SKIPPED\"\nPRINT \"REST\":END\nPRINT \"SUB\":RETURN", "SUB|REST"},
        {"GOSUB 30:GOSUB 30\nPRINT A:END\nA=A+1:RETURN", " 2"},
        // GOTO out of a subroutine leaves its frame
        {"GOSUB 40\nPRINT \"BACK\"\nEND\nGOTO 50\nRETURN", "BACK"},
        // a subroutine that is entered by GOTO
        {"GOSUB 30\nPRINT \"END\":END\nGOSUB 40:GOTO 50\nPRINT \"IN\":RETURN\nPRINT \"OUT\":RETURN", "IN|OUT|END"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(shown_by(row.program), row.expected);
    }
}

TEST(Jumps, ComeBackFromAnotherAreaToTheRestOfTheLine) {
    TestMachine t;
    ASSERT_TRUE(
        t.load("[P1]\n10 A=1:GOSUB #2:PRINT A:END\n[P2]\n10 A=A+1\n20 GOSUB 40\n30 RETURN\n40 A=A*10:RETURN\n"));
    t.m.run_page = 1;
    play(t, "run");
    EXPECT_EQ(t.run_through(), std::vector<std::string>{" 20"});
    EXPECT_EQ(t.m.cur_area, 1);
    EXPECT_EQ(t.m.gosub_depth, 0);
}

TEST(Jumps, TakeOneTick) {
    for (const char* jump : {"GOTO 30", "GOSUB 30", "ON 1 GOTO 30", "ON 1 GOSUB 30", "IF 1 THEN 30"}) {
        SCOPED_TRACE(jump);
        TestMachine t;
        t.start(std::string(jump) + ":A=1\nA=1\nA=2");
        t.tick();
        EXPECT_EQ(t.m.variables[0].kind, -1);
        EXPECT_EQ(t.m.cur_line, 2);
        t.tick();
        EXPECT_EQ(t.m.variables[0].number, 2);
    }
}

TEST(Jumps, Fail) {
    const Row rows[] = {
        {R"(GOTO #"3")", "ERR2 P0-1 GOTO 0"},
        {"GOTO #A$", "ERR2 P0-1 GOTO 1"},
        {R"(A$="3":GOTO #A$)", "ERR2 P0-1 GOTO 1"},
        {R"(A$="3":GOTO #A)", "ERR2 P0-1 GOTO 1"},
        {"GOTO #10", "ERR5 P0-1 GOTO 2[10]"},
        {"GOTO #-1", "ERR5 P0-1 GOTO 2[-1]"},
        {"GOTO #12.7", "ERR5 P0-1 GOTO 2[12]"},
        {"GOTO #5", "ended GOTO 3[5]"},
        {"GOTO #4", "ended GOTO 3[4]"}, // in use, but without lines
        {R"(GOTO "10")", "ERR2 P0-1 GOTO 4"},
        {"GOTO A$", "ERR2 P0-1 GOTO 4"},
        {R"(A$="3":GOTO A)", "ERR2 P0-1 GOTO 4"},
        {"GOTO", "ERR2 P0-1 GOTO 4"},
        {"GOTO :PRINT 1", "ERR2 P0-1 GOTO 4"},
        {"GOTO 99", "ERR4 P0-1 GOTO 5[99]"},
        {"GOTO -7.5", "ERR4 P0-1 GOTO 5[-7]"},
        {"GOTO 100", "ERR4 P0-1 GOTO 5[100]"}, // a line of another area
        {"GOTO 15", "ERR4 P0-1 GOTO 5[15]"},   // no next higher line is looked for
        {"GOTO A/0", "ERR3 P0-1 SYSTEM 5"},
        {"GOTO #1/0", "ERR3 P0-1 SYSTEM 5"},
        {"GOSUB 1/0", "ERR3 P0-1 SYSTEM 5"},
        {R"(GOSUB #"3")", "ERR2 P0-1 GOSUB 1"},
        {"GOSUB #A$", "ERR2 P0-1 GOSUB 2"},
        {R"(A$="3":GOSUB #A)", "ERR2 P0-1 GOSUB 2"},
        {"GOSUB #10", "ERR5 P0-1 GOSUB 3[10]"},
        {"GOSUB #-1", "ERR5 P0-1 GOSUB 3[-1]"},
        {"GOSUB #5", "ended GOSUB 4[5]"},
        {"GOSUB #4", "ended GOSUB 4[4]"},
        {R"(GOSUB "10")", "ERR2 P0-1 GOSUB 5"},
        {R"(A$="3":GOSUB A)", "ERR2 P0-1 GOSUB 5"},
        {"GOSUB", "ERR2 P0-1 GOSUB 5"},
        {"GOSUB 99", "ERR4 P0-1 GOSUB 6[99]"},
        {"RETURN", "ERR7 P0-1 RETURN 0"},
        {"GOSUB #9:RETURN", "ERR7 P0-1 RETURN 0"},
        {"ON 1 PRINT 1", "ERR2 P0-1 ON 0:0x0204 (TOKEN_ID)"},
        {"ON 1", "ERR2 P0-1 ON 0:0xffffffff (TOKEN_ID)"},
        {"ON 1 10,20", "ERR2 P0-1 ON 0:0x0001 (TOKEN_ID)"},
        {"ON 2 GOTO 10;20", "ERR2 P0-1 ON 0:0x003b (TOKEN_ID)"},
        {"ON 2 GOTO 10 20", "ERR2 P0-1 ON 0:0x0001 (TOKEN_ID)"},
        {"ON 1 GOTO", "ERR2 P0-1 ON 2"},
        {R"(ON 1 GOTO "10")", "ERR2 P0-1 ON 2"},
        {"ON 1 GOTO A$", "ERR2 P0-1 ON 2"},
        {R"(A$="3":ON 1 GOTO A)", "ERR2 P0-1 ON 2"},
        {R"(ON 2 GOTO "10",20)", "ERR2 P0-1 ON 2"},
        {R"(ON 2 GOTO #"3",20)", "ERR2 P0-1 ON 2"},
        {"ON 2 GOTO 10,", "ERR2 P0-1 ON 2"},
        {R"(ON 1 GOTO #"3")", "ERR2 P0-1 ON 3"},
        {"ON 1 GOTO #A$", "ERR2 P0-1 ON 4"},
        {R"(A$="3":ON 1 GOTO #A)", "ERR2 P0-1 ON 4"},
        {"ON 1 GOTO #10", "ERR5 P0-1 ON 5"},
        {"ON 1 GOSUB #-1", "ERR5 P0-1 ON 5"},
        {"ON 1 GOTO #5", "ended ON 6"},
        {"ON 1 GOSUB #4", "ended ON 6"},
        {"ON 1 GOTO 99", "ERR4 P0-1 ON 7"},
        {"ON 1 GOSUB 99", "ERR4 P0-1 ON 7"},
        {"ON 1/0 GOTO 10", "ERR3 P0-1 SYSTEM 5"},
        {"PRINT #3", "ERR2 P0-1 SYSTEM 4"}, // "#" only behind a jump word
        {"A=#3", "ERR2 P0-1 SYSTEM 4"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        TestMachine t;
        t.load(with_marks(row.program));
        play(t, "run");
        t.run_through();
        std::string failure = "ok";
        if (t.m.error_code != ERROR_NONE)
            failure = t.display() + " " + t.detail_id() + t.detail();
        else if (!t.detail_id().empty())
            failure = "ended " + t.detail_id() + t.detail();
        EXPECT_EQ(failure, row.expected);
        EXPECT_EQ(t.m.run_state, STATE_ENDED);
        EXPECT_EQ(t.m.gosub_depth, 0);
    }
}

TEST(Jumps, GoSevenCallsDeep) {
    const Row rows[] = {
        {"A=A+1:IF A<8;GOSUB 10:B=B+A\nRETURN", "ok"},
        {"A=A+1:GOSUB 10+0/(A-8)", "ERR7 P0-10 GOSUB 0[MAX:7]"}, // its target is not even evaluated
        {"A=A+1:ON 1 GOSUB 10+0/(A-8)\nREM", "ERR7 P0-10 ON 1 [MAX:7]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        TestMachine t;
        t.start(row.program);
        t.run_through();
        EXPECT_EQ(t.m.variables[0].number, 8);
        const std::string failure = t.display().empty() ? "" : t.display() + " " + t.detail_id() + t.detail();
        if (row.expected == std::string_view("ok")) {
            EXPECT_EQ(failure, "ERR7 P0-20 RETURN 0") << "all seven have returned";
            EXPECT_EQ(t.m.variables[1].number, 7 * 8);
        } else {
            EXPECT_EQ(failure, row.expected);
            EXPECT_EQ(t.m.gosub_depth, GOSUB_DEPTH_MAX);
        }
    }
}

TEST(Jumps, EndTheProgramWhenOnCallsFromTheLastLine) {
    TestMachine t;
    t.start("A=A+1:IF A>1;PRINT \"CALLED\"\nON 1 GOSUB 10");
    t.tick(3);
    EXPECT_EQ(moment(t), "run 0 0 []");
    t.tick();
    EXPECT_EQ(moment(t), "ended 0 0 []");
    EXPECT_EQ(t.m.variables[0].number, 1);
}

TEST(Jumps, ToAreasTellWhetherTheProgramEndsBehindAWait) {
    const Row rows[] = {
        {"GOTO #8", "ended 0 0 []"},
        {"GOSUB #8", "command 16 0 []"}, // a call leaves the mark of the wait before it
        {"ON 1 GOTO #8", "ended 0 0 []"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        TestMachine t;
        t.load("[P0]\n10 PRINT \"A\":" + std::string(row.program) + "\n[P8]\n10 A=1\n");
        play(t, "run 1 exe 9");
        EXPECT_EQ(moment(t), row.expected);
    }
}

} // namespace
} // namespace quillon::testing
