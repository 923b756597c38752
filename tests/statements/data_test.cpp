// DATA, READ and RESTORE. What the index of items holds is in core's tests.
#include "shell/commands.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Data, IsReadAndRestored) {
    const char* const rows = R"(
        DATA 1,2 || READ A,B:PRINT A;B -> 1 2                  READ A:PRINT A || DATA 7 -> 7
        DATA 1,2:PRINT 3;:READ A,B:PRINT B -> 3 2              REM DATA 1 || DATA 2 || READ A:PRINT A -> 2
        DATA 1 || DATA 2 || READ A:READ B:PRINT A;B -> 1 2     DATA 3 || READ A(2):PRINT C -> 3
        DATA -1.5,+2,.5,1E3,2e-1 || READ A,B,C,D,E:PRINT A+B+C+D+E -> 1001.2
        FOR I=0 TO 2:READ A(I):NEXT I:PRINT A;B;C || DATA 4,5,6 -> 4 5 6
        DATA ,, || READ A,B$:PRINT A;LEN(B$) -> 0 0            DATA 1 || READ A:A=A+1:PRINT A -> 2
        DATA ABCDEFGHIJ || READ A$:PRINT A$ -> ABCDEFG          DATA 12 || READ A$:PRINT A$+"!" -> 12!
        DATA 1234567890123456789012345678901234 || READ $:PRINT LEN($) -> 30
        DATA "1,2",X || READ A$,B$:PRINT A$;B$ -> 1,2X          DATA A B ," C " || READ A$,B$:PRINT A$;"<";B$;">" -> A B< C >
        DATA A\piB || READ A$:PRINT LEN(A$) -> 3
        A$="X":READ A:PRINT A || DATA 4 -> 4                   A=5:READ A$:PRINT A$ || DATA T -> T
        DATA 1,2 || READ A,B:RESTORE:READ C:PRINT C -> 1       DATA 1 || DATA 2,3 || RESTORE 20:READ A:PRINT A -> 2
        DATA 1 || DATA 2 || L=20:RESTORE L:READ A:PRINT A -> 2
        DATA 1 || DATA 2 || RESTORE 10+10:READ A:PRINT A -> 2  DATA 1 || DATA 2 || RESTORE 20.9:READ A:PRINT A -> 2
        DATA 1 || DATA 2 || RESTORE 19.9999999:READ A:PRINT A -> 2
        A=1:DATA 1:DATA 2 || RESTORE 10:READ A,B:PRINT A;B -> 1 2
        RESTORE:PRINT 1 -> 1
    )";
    for (const Case& row : arrow_cases(rows)) {
        const std::string shown = shown_by(row.text);
        EXPECT_EQ(shown.substr(shown.starts_with(' ') ? 1 : 0), row.outcome) << row.text;
    }
}

TEST(Data, Fails) {
    const char* const rows = R"(
        DATA 1, || READ A,B -> ERR4 P0-20 READ 2          RESTORE:READ A -> ERR4 P0-10 READ 2
        DATA 1 || DATA 2 || RESTORE 20:READ A:READ B -> ERR4 P0-30 READ 2
        DATA 1 || RESTORE 20 -> ERR4 P0-20 RESTORE 3      DATA 1 || RESTORE 15 -> ERR4 P0-20 RESTORE 3
        DATA 1 || RESTORE 1/0 -> ERR3 P0-20 SYSTEM 5
    )";
    for (const Case& row : arrow_cases(rows))
        EXPECT_EQ(failure_of(row.text), row.outcome) << row.text;
    for (const std::string item : {"X1", "1X", "0x10", "inf", "nan", "1 2", "--1", "1E", "5\\pi", "\"5 \""})
        EXPECT_EQ(error_of("DATA " + item + "\nREAD A"), "ERR2 READ 3") << item;
}

TEST(Data, AFaultKeepsWhatWasReadAndStaysThere) {
    TestMachine t;
    t.start("DATA 1,X,3\nA$=\"S\":READ B,A,C");
    t.run_through();
    EXPECT_EQ(cell(t, 'B').number, 1);
    EXPECT_EQ(t.m.data_index[static_cast<std::size_t>(t.m.data_pos)].text.view(), "X");
}

TEST(Data, BelongsToItsArea) {
    TestMachine t;
    t.load("[P1]\n10 READ A:PRINT A\n20 READ A\n30 DATA 11\n[P0]\n10 DATA 1,2\n[P2]\n10 READ A\n"
           "[P3]\n10 RESTORE 20:READ A:PRINT A\n20 DATA 2\n[P4]\n10 RESTORE 20\n");
    const std::vector<std::string> shown[] = {{" 11", "ERR4 P1-20"}, {"ERR4 P2-10"}, {" 2"}, {"ERR4 P4-10"}};
    for (const int page : {1, 2, 3, 4, 3}) { // a start goes back to the first item
        t.m.run_page = page;
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.run_through(), shown[page - 1]) << page;
    }
}

} // namespace
} // namespace quillon::testing
