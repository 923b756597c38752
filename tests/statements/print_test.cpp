// PRINT: separators, waits, and texts that scroll in.
#include "core/display_line.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Print, ShowsItsItemsStepByStep) {
    struct Row {
        const char* program;
        const char* script;
        const char* moment;
    };
    const Row rows[] = {
        // one item, and its end
        {R"(PRINT "ABC")", "1", "wait 0 3 [ABC]"},
        {R"(PRINT "ABC")", "1 500", "wait 0 3 [ABC]"},
        {R"(PRINT "ABC":A=5:PRINT A)", "1 exe", "run 0 0 []"},
        {R"(PRINT "ABC":A=5:PRINT A)", "1 exe 2", "wait 0 2 [ 5]"},
        {"PRINT -1.5", "1", "wait 0 4 [-1.5]"},
        {"PRINT (1", "1", "wait 0 2 [ 1]"},
        {R"(PRINT ")", "1", "wait 0 0 []"},
        // ";" joins, a tick for each item
        {R"(PRINT "AB";"CD")", "1", "run 7 2 [AB]"},
        {R"(PRINT "AB";"CD")", "2", "wait 0 4 [ABCD]"},
        {R"(PRINT "AB";"CD")", "2 exe 1", "run 0 0 []"},
        {"PRINT 1;2;-3", "3", "wait 0 6 [ 1 2-3]"},
        {"PRINT \"AB\";\nPRINT \"CD\"", "1", "run 7 2 [AB]"},
        {"PRINT \"AB\";\nPRINT \"CD\"", "2", "run 0 2 [AB]"},
        {"PRINT \"AB\";\nPRINT \"CD\"", "4", "wait 0 4 [ABCD]"},
        {R"(PRINT "AB";:PRINT "CD")", "3", "wait 0 4 [ABCD]"},
        {R"(PRINT "";"A")", "2", "wait 0 1 [A]"},
        // "," waits and starts a cleared line
        {R"(PRINT "AB","CD")", "1", "wait 7 2 [AB]"},
        {R"(PRINT "AB","CD")", "1 exe", "run 7 0 []"},
        {R"(PRINT "AB","CD")", "1 exe 1", "wait 0 2 [CD]"},
        {R"(PRINT "AB";"CD","E";"F")", "2", "wait 7 4 [ABCD]"},
        {R"(PRINT "AB";"CD","E";"F")", "2 exe 2", "wait 0 2 [EF]"},
        // a bare PRINT does not wait; what was shown stands until the next output
        {"PRINT", "1", "run 0 0 []"},
        {R"(PRINT "AB";:PRINT:A=1:PRINT "C")", "4", "run 0 0 [AB]"},
        {R"(PRINT "AB";:PRINT:A=1:PRINT "C")", "5", "wait 0 1 [C]"},
        {"PRINT \"AB\";:PRINT\nPRINT\nPRINT \"C\";", "5", "run 7 1 [C]"},
        // twelve columns exactly do not scroll, a further item does
        {R"(PRINT "ABCDEFGHIJKL")", "1", "wait 0 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKL","M")", "1", "wait 7 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKL";"M")", "2", "run 10 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKL";"M")", "2 24", "run 10 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKL";"M")", "2 25", "wait 0 12 [BCDEFGHIJKLM]"},
        {R"(PRINT "ABCDEFGHIJKL";:PRINT "MN")", "3 25", "run 10 13 [BCDEFGHIJKLM]"},
        {R"(PRINT "ABCDEFGHIJK";"LM")", "2 64", "run 10 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJK";"LM")", "2 65", "wait 0 12 [BCDEFGHIJKLM]"},
        {R"(PRINT "ABCDEFGHIJKL";"")", "2", "wait 0 12 [ABCDEFGHIJKL]"},
        // a longer text scrolls in
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1", "run 10 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 64", "run 10 12 [ABCDEFGHIJKL]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65", "run 10 13 [BCDEFGHIJKLM]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65 24", "run 10 13 [BCDEFGHIJKLM]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65 25", "run 10 14 [CDEFGHIJKLMN]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65 50", "run 10 15 [DEFGHIJKLMNO]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65 74", "run 10 15 [DEFGHIJKLMNO]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 65 75", "wait 0 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP","Q")", "1 140", "wait 7 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP","Q")", "1 140 exe 1", "wait 0 1 [Q]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 140", "run 7 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 140 24", "run 7 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 140 25", "run 10 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 140 25 24", "run 10 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 140 25 25", "wait 0 12 [FGHIJKLMNOPQ]"},
        // EXE lets the rest in at once, and is used up by it
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 exe", "wait 0 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 80 exe", "wait 0 12 [EFGHIJKLMNOP]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP")", "1 80 exe exe", "run 0 0 []"},
        {R"(PRINT "ABCDEFGHIJKLMNOP","Q")", "1 exe exe 1", "wait 0 1 [Q]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";"Q")", "1 exe 25 exe", "wait 0 12 [FGHIJKLMNOPQ]"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";:PRINT "Q")", "1 exe 26 exe", "wait 0 12 [FGHIJKLMNOPQ]"},
        // items without a text: a string variable that holds none
        {"PRINT A$", "1", "wait 0 0 []"},
        {R"(PRINT A$;"X")", "1", "wait 0 1 [X]"},
        {"A=5:PRINT A$;B$;A", "2", "wait 0 2 [ 5]"},
        {R"(PRINT A$,"X")", "1", "wait 7 0 []"},
        {R"(PRINT A$;:PRINT "X")", "2", "wait 0 1 [X]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.program) + " / " + row.script);
        EXPECT_EQ(moment_after(row.program, row.script), row.moment);
    }
}

TEST(Print, ScrollsAtTheConfiguredPace) {
    struct Row {
        int wait_print_sc_ini;
        int wait_print_sc;
        int ticks; ///< from the item to its second step
        const char* before;
    };
    const Row rows[] = {
        {0, 0, 2, "run 10 13 [BCDEFGHIJKLM]"},
        {3, 0, 5, "run 10 13 [BCDEFGHIJKLM]"},
        {0, 7, 9, "run 10 13 [BCDEFGHIJKLM]"},
        {100, 10, 112, "run 10 13 [BCDEFGHIJKLM]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.ticks);
        TestMachine t;
        t.start(R"(PRINT "ABCDEFGHIJKLMN")");
        t.m.wait_print_sc_ini = row.wait_print_sc_ini;
        t.m.wait_print_sc = row.wait_print_sc;
        t.tick(row.ticks);
        EXPECT_EQ(moment(t), row.before);
        t.tick();
        EXPECT_EQ(moment(t), "wait 0 12 [CDEFGHIJKLMN]");
        EXPECT_EQ(t.m.wait_counter, row.wait_print_sc);
        EXPECT_EQ(t.m.state_after_scroll, STATE_RUN);
        EXPECT_EQ(t.m.kind_after_scroll, KIND_NONE);
    }
}

TEST(Print, CarriesTheLongestTexts) {
    const std::string thirty = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    const std::string longest = thirty + thirty + thirty + thirty + "ABCDEFG"; // 127 characters
    TestMachine t;
    t.start(R"(PRINT ")" + longest + R"(")");
    t.tick();
    t.exe();
    EXPECT_EQ(moment(t), "wait 0 12 [" + longest.substr(115) + "]");
    // Behind twelve columns 115 more have room: the line ends at column 126.
    t.start(R"(PRINT "0123456789ab";")" + longest + R"(";"END")");
    t.tick(2);
    t.exe();
    EXPECT_EQ(moment(t), "run 7 12 [" + longest.substr(103, 12) + "]");
    t.tick(t.m.wait_print_sc + 1);
    t.exe();
    EXPECT_EQ(moment(t), "wait 0 12 [" + longest.substr(106, 9) + "END]");
}

TEST(Print, ShowsTheColumnsThatEndAtTheWriteColumn) {
    struct Row {
        int run_state;
        int display_cursor;
        int first;
    };
    const Row rows[] = {
        {STATE_RUN, 0, 0},
        {STATE_RUN, 12, 0},
        {STATE_RUN, 13, 1},
        {STATE_ENDED, 127, 115},
        {STATE_RUN, 509, 497},
        {STATE_RUN, 510, 0},
        {STATE_PRINT_WAIT, 13, 1},
        // where a line is typed, its cursor needs a column
        {STATE_INPUT, 11, 0},
        {STATE_INPUT, 12, 1},
        {STATE_COMMAND, 11, 0},
        {STATE_COMMAND, 12, 1},
        {STATE_COMMAND, 509, 498},
        {STATE_COMMAND, 510, 0},
    };
    TestMachine t;
    for (const Row& row : rows) {
        t.m.run_state = row.run_state;
        t.m.display_cursor = row.display_cursor;
        EXPECT_EQ(first_visible_column(t.m), row.first) << row.run_state << " " << row.display_cursor;
    }
}

TEST(Print, StartsAfterARunOnACleanLine) {
    TestMachine t;
    t.start(R"(PRINT "AB";:PRINT:STOP)");
    t.tick(4);
    EXPECT_EQ(t.m.print_clear_pending, 1);
    play(t, "home run");
    EXPECT_EQ(t.m.print_clear_pending, 0);
    EXPECT_EQ(t.display(), "");
    t.start(R"(PRINT "ABCDEFGHIJKLMNOP")");
    play(t, "10 stop stop run");
    EXPECT_EQ(moment(t), "run 0 0 []");
    EXPECT_EQ(t.m.wait_counter, 0);
    t.tick();
    EXPECT_EQ(moment(t), "run 10 12 [ABCDEFGHIJKL]");
}

TEST(Print, ReportsFaults) {
    struct Row {
        const char* program;
        const char* failure;
    };
    const Row rows[] = {
        {R"(A$="X":PRINT A)", "ERR6 P0-10 PRINT 0"},
        {R"(A$="X":PRINT "Y";A)", "ERR6 P0-10 PRINT 0"},
        {R"(A$="X":PRINT A,1)", "ERR6 P0-10 PRINT 0"},
        {R"(A$="X":PRINT A;1)", "ERR6 P0-10 PRINT 0"},
        {"PRINT 1 2", "ERR2 P0-10 PRINT 1 : 0x0001 (TOKEN_ID)"},
        {R"(PRINT "A""B")", "ERR2 P0-10 PRINT 1 : 0x0006 (TOKEN_ID)"},
        {"PRINT 1)", "ERR2 P0-10 PRINT 1 : 0x0029 (TOKEN_ID)"},
        {"PRINT A=1", "ERR2 P0-10 PRINT 1 : 0x003d (TOKEN_ID)"},
        {"PRINT 1#2", "ERR2 P0-10 PRINT 1 : 0x0023 (TOKEN_ID)"},
        {"PRINT 1 PRINT 2", "ERR2 P0-10 PRINT 1 : 0x0204 (TOKEN_ID)"},
        {"PRINT 1 THEN 2", "ERR2 P0-10 PRINT 1 : 0x0209 (TOKEN_ID)"},
        {"PRINT 1,", "ERR2 P0-10 PRINT 2"},
        {"PRINT 1,:A=1", "ERR2 P0-10 PRINT 2"},
        {"PRINT 1;2,", "ERR2 P0-10 PRINT 2"},
        {"PRINT PRINT 1", "ERR2 P0-10 SYSTEM 50:0x0204 (TOKEN_ID)"},
        {"PRINT 1;GOTO 10", "ERR2 P0-10 SYSTEM 50:0x0205 (TOKEN_ID)"},
        {"PRINT ;1", "ERR2 P0-10 SYSTEM 4:';'"},
        {"PRINT 1;;2", "ERR2 P0-10 SYSTEM 4:';'"},
        {"PRINT ,1", "ERR2 P0-10 SYSTEM 4:0x002c (TOKEN_ID)"},
        {"PRINT #1", "ERR2 P0-10 SYSTEM 4"},
        {"PRINT 1/0", "ERR3 P0-10 SYSTEM 5"},
        {"PRINT AB", R"(ERR2 P0-10 SYSTEM 4:"ab")"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        EXPECT_EQ(failure_of(row.program), row.failure);
    }
}

TEST(Print, FailsWhenTheStatementGoesOnBehindAComma) {
    TestMachine t;
    t.start("PRINT 1,");
    t.tick(5);
    EXPECT_EQ(moment(t), "wait 7 2 [ 1]");
    play(t, "exe 1");
    EXPECT_EQ(t.display(), "ERR2 P0-10");
    EXPECT_EQ(t.m.run_state, STATE_ENDED) << "and not in a wait";
}

} // namespace
} // namespace quillon::testing
