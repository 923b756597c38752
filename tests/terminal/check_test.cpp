// What `check` finds: for each kind of finding a listing and its report, and listings that have none.
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"

#include "terminal/check.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <set>

namespace quillon::testing {
namespace {

constexpr std::string_view ALL_WORDS[] = {
#define FINDING(name, word) word,
#include "terminal/check_findings.def"
};

/// "2:4 error unknown-word" for each finding, with ", " between.
std::string found_in(const std::string& listing) {
    std::string text;
    for (const Finding& f : check_listing(listing).findings) {
        text += text.empty() ? "" : ", ";
        text += std::to_string(f.line) + ':' + std::to_string(f.column) + (f.is_error ? " error " : " warning ");
        text += finding_word(f.kind);
    }
    return text;
}

std::string repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string numbered_lines(int count, std::string_view text) {
    std::string result;
    for (int i = 1; i <= count; ++i)
        result.append(std::to_string(i)).append(" ").append(text).append("\n");
    return result;
}

struct Row {
    std::string listing;
    std::string_view report;
};

// clang-format off
const Row FAULTY_LISTINGS[] = {
    {"' only a comment\n", "2:1 error no-area"},
    {"10 PRINT\n20 PRNT\n", "1:1 error text-outside-area, 2:4 error unknown-word"},
    {"hello\nworld\n[P0]\n10 PRINT\n", "1:1 error text-outside-area, 2:1 error text-outside-area"},
    {"[P0]\n10 PRINT\n[X]\n[P\n[P1)\n", "3:1 error text-outside-area, 4:1 error bad-header, 5:1 error bad-header"},
    {"[P0]\n10 PRINT\n[P0]\n5 PRNT\n", "3:1 error area-twice, 4:3 error unknown-word"},
    {"[P0]\nPRINT\n10 PRINT\n", "2:1 error no-line-number"},
    {"[P0]\n12345678 PRINT\n", "2:1 error line-number-too-long"},
    {"[P0]\n10PRNT\n", "2:1 error no-blank-after-number, 2:3 error unknown-word"},
    {"[P0]\n10 PRINT\n5 PRINT\n7 PRINT\n7 PRINT\n", "3:1 error line-number-order, 5:1 error line-number-order"},
    {"[P0]\n" + numbered_lines(513, "PRINT"), "514:1 error too-many-lines"},
    {"[P0]\n10 DATA \"A\" B,C\n20 DATA \"D\"E\n", "2:13 error data-separator, 3:12 error data-separator"},
    {"[P0]\n10 DATA 1" + repeated(",1", 508) + "\n20 DATA 2\n", "3:4 error too-much-data"},
};

// Below "[P0]" and a line number: the columns of a line count from its "1".
const Row FAULTY_LINES[] = {
    // what cannot be read
    {"PRNT 1:A=FOO", "2:4 error unknown-word, 2:13 error unknown-word"},
    {"A=1.5.2", "2:6 error bad-number"},
    {R"(A$="\zz")", "2:7 error bad-literal"},
    {"A=&G", "2:6 error bad-ampersand"},
    {"JC 1:PRINT 2", "2:4 warning misspelt-word"},
    {"PRINT \"ABC", "2:10 warning unclosed-literal"},
    {R"(A$="ABCDEFGH":B$="ABCDEFG":$="ABCDEFGH")", "2:7 warning literal-cut"},
    {"$=\"" + repeated("X", 31) + '"', "2:6 warning literal-cut"},
    {"A$=\"" + repeated("X", 20) + "\"+\"" + repeated("X", 12) + '"', "2:7 warning literal-cut"},
    {"PRINT \"" + repeated("X", 128) + '"', "2:10 warning literal-cut"},
    {"DATA " + repeated("X", 31), "2:9 warning data-cut"},
    // expressions
    {"A=)", "2:6 error unexpected"},
    {"A=1+", "2:8 error missing-operand"},
    {"A=SIN", "2:9 error missing-operand"},
    {"A=(1+2:B=A(1", "2:6 warning missing-parenthesis, 2:13 warning missing-parenthesis"},
    {"A=PRINT", "2:6 error keyword-in-expression"},
    {"PRINT GOTO", "2:10 error keyword-in-expression"},
    {R"(A$=5:A="X":A=B$:A$=B)", "2:7 error wrong-type, 2:11 error wrong-type, 2:17 error wrong-type, 2:23 error wrong-type"},
    {R"(A="X"-1:A=1+"X":A=SIN "X":IF 1="X" THEN 10)", "2:9 error wrong-type, 2:15 error wrong-type, 2:22 error wrong-type, 2:34 error wrong-type"},
    {R"(GOTO "X":GLOAD 5:A=LEN(5))", "2:9 error bad-statement, 2:19 error wrong-type, 2:27 error wrong-type"},
    {"5=A:A+1=2:=3", "2:4 error bad-target, 2:8 error bad-target, 2:14 error unexpected"},
    {"A=1/0", "2:7 error division-by-zero"},
    {"A(222)=1:B(221)=1:A(-1)=1:MODE 9:BEEP 2", "2:4 error out-of-range, 2:13 error out-of-range, 2:22 error out-of-range, 2:35 error out-of-range, 2:42 error out-of-range"},
    {"BEEPS 9,1,1:BEEPS 1,12,1:PRINT CSR 12:SET G 19:GOTO #10", "2:10 error out-of-range, 2:24 error out-of-range, 2:35 error out-of-range, 2:48 error out-of-range, 2:57 error out-of-range"},
    {"A=" + repeated("(", 80) + "1", "2:77 error nested-too-deep"},
    // statements
    {"DIM A(5):LIST_A:TO:READ# A", "2:4 error no-statement, 2:13 error no-statement, 2:20 error no-statement, 2:23 error no-statement"},
    {"FOR A$=1 TO 2:FOR A TO 5:FOR A=1:LET 5=1:SET Q", "2:8 error bad-statement, 2:24 error bad-statement, 2:36 error bad-statement, 2:41 error bad-statement, 2:49 error bad-statement"},
    {"IF A:PRINT 1,:INPUT \"X\" A:INPUT 5:ON A PRINT:RUN A", "2:8 error bad-statement, 2:17 error bad-statement, 2:28 error bad-statement, 2:36 error unexpected, 2:43 error bad-statement, 2:53 error bad-statement"},
    {"A=5 B=6:NEXT I J:VAC 5", "2:8 error text-after-statement, 2:12 error next-without-for, 2:19 error text-after-statement, 2:25 error text-after-statement"},
    {"GOSUB 10 A:GOSUB 10 A=5:A=5)B=6:STOP PRINT", "2:13 warning text-after-statement, 2:24 error text-after-statement, 2:31 warning text-after-statement, 2:41 warning text-after-statement"},
    {"IF A THEN 10:PRINT 1", "2:17 warning never-reached"},
    {"GOTO 10:DATA 1:REM end", ""},
    {"ON A GOSUB 10,10:PRINT 1", "2:21 warning never-reached"},
    {"IF A THEN B=5", "2:14 warning never-reached"},
    {"A:5:A<5:IF A THEN", "2:4 warning no-effect, 2:6 warning no-effect, 2:8 warning no-effect, 2:21 warning no-effect"},
    // what belongs together
    {"GOTO 20:GOTO A", "2:9 error no-such-line"},
    {"ON A GOTO 10,20:GOSUB 30", "2:17 error no-such-line, 2:26 error no-such-line"},
    {"RESTORE 10:RUN 20", "2:12 error no-such-line, 2:19 error no-such-line"},
    {"GOSUB #0:GOSUB #1:GOSUB #A", "2:20 error no-such-area"},
    {"READ A", "2:4 error no-data"},
    {"NEXT I:FOR I=1 TO 2", "2:4 error next-without-for"},
    {"FOR J=1 TO 2:NEXT I", "2:17 error next-without-for"},
    {"FOR A=1 TO 2:FOR B=1 TO 2:FOR C=1 TO 2:FOR D=1 TO 2:FOR E=1 TO 2", "2:60 error for-too-deep"},
    {"FOR A=1 TO 2:FOR B=1 TO 2:FOR C=1 TO 2:IF X;FOR D=1 TO 2:FOR E=1 TO 2", "2:65 warning for-too-deep"},
};

const std::string CLEAN_LISTINGS[] = {
    "[P0]\n10 FOR I=1 TO 3:GOSUB 100:NEXT I:END\n100 FOR J=1 TO 2\n110 NEXT J:RETURN\n",
    "[P0]\n10 GOTO 100\n20 NEXT I:END\n100 FOR I=1 TO 3:GOTO 20\n",      // a loop that is ended above its start
    "[P0]\n10 GOSUB 100\n20 NEXT I:END\n100 FOR I=1 TO 3:RETURN\n",      // opened by a subroutine
    "[P0]\n10 GOTO X\n20 NEXT:END\n30 FOR I=1 TO 3:GOTO X\n",            // jumps that are computed
    "[P0]\n10 GOTO #1\n20 NEXT I\n30 END\n40 FOR I=1 TO 2:GOTO 20\n[P1]\n10 GOTO #0\n",
    "[P0]\n10 FOR A(3)=1 TO 2\n20 NEXT D\n",
    "[P0]\n10 IF A$=\"X\" THEN LET B=5\n20 IF A>B;A=B:GOTO 10\n30 IF A$<>\"\";A$=\"\":PRINT A\n40 ON A GOTO 10,#0\n",
    "[P0]\n10 SET E 3:SET N:MODE 4:PRINT CSR 3;A;\"X\";:PRINT :READ A,A$(3):RESTORE 20:RESTORE\n20 DATA 1, \"A,B\" ,:STOP:END\n",
    "[P0]\r\n10 PRINT \"A\":REM anything (\r\n20 SAVE \"A:B\":PASS 1/:A=SIN 30*2+LEN(\"A\"+B$)\r\n",
    "[P0]\n10 INPUT \"N\",A,B$,\"M\",C(A*2):PRINT MID$(1,2)+STR$(A);KEY$:BEEPS 3,0,100:BEEPWAIT:VAC\n",
};
// clang-format on

TEST(Check, FindsWhatDoesNotLoad) {
    for (const Row& row : FAULTY_LISTINGS) {
        SCOPED_TRACE(row.listing.substr(0, 60));
        EXPECT_EQ(found_in(row.listing), row.report);
    }
}

TEST(Check, FindsWhatIsWrongWithStatements) {
    for (const Row& row : FAULTY_LINES) {
        SCOPED_TRACE(row.listing);
        EXPECT_EQ(found_in("[P0]\n10 " + row.listing + "\n"), row.report);
    }
}

TEST(Check, HasATestForEachKind) {
    std::string reports;
    for (const Row& row : FAULTY_LISTINGS)
        reports += row.report;
    for (const Row& row : FAULTY_LINES)
        reports += row.report;
    for (const std::string_view word : ALL_WORDS)
        EXPECT_NE(reports.find(word), std::string::npos) << word;
}

TEST(Check, IsSilentAboutWhatIsRight) {
    for (const std::string& listing : CLEAN_LISTINGS)
        EXPECT_EQ(found_in(listing), "") << listing;
    int examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_EXAMPLES)) {
        if (entry.path().extension() != ".bas")
            continue;
        ++examples;
        EXPECT_EQ(found_in(bytes_of(entry.path())), "") << entry.path();
    }
    EXPECT_GE(examples, 6);
}

/// Any number of findings takes little memory; all errors count.
TEST(Check, KeepsToItsLimit) {
    const CheckReport report = check_listing("[P0]\n" + repeated("?\n", 10000));
    EXPECT_EQ(report.findings.size(), CHECK_FINDINGS_MAX);
    EXPECT_EQ(report.errors, 10000U);
}

TEST(CheckProgram, ReportsForEditors) {
    const TemporaryFile good("[P0]\n10 PRINT 1\n");
    const TemporaryFile odd("[P0]\n10 A$=\"ABCDEFGH\"\n");
    const TemporaryFile bad("[P0]\n10 PRNT 1\n20 GOTO 5\n");
    const std::string missing = good.path + ".missing";
    const std::string of_odd = odd.path + ":2:7: warning: the string is cut to 7 of its 8 characters\n";
    const std::string of_bad =
        bad.path + ":2:4: error: unknown word PRNT\n" + bad.path + ":3:9: error: there is no line 5\n";
    const struct {
        std::vector<std::string> listings;
        int status;
        std::string out;
    } rows[] = {
        {{good.path}, 0, ""},
        {{odd.path}, 0, of_odd},
        {{good.path, bad.path, odd.path}, 1, of_bad + of_odd},
        {{missing, bad.path}, 2, of_bad},
        {{bad.path, QUILLON_EXAMPLES}, 2, of_bad}, // a folder
        {{}, 2, ""},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{"check"};
        arguments.insert(arguments.end(), row.listings.begin(), row.listings.end());
        const Outcome outcome = run_program(arguments);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err.empty(), row.status != 2);
    }
}

TEST(CheckProgram, ReportsForMachines) {
    const Outcome outcome = run_program({"check", "--json", "-"}, "[P0]\n10 PRNT 1\n20 A\n");
    EXPECT_EQ(outcome.status, 1);
    const auto expected = nlohmann::json::parse(R"([{"file": "-", "errors": 1, "warnings": 1, "findings": [
        {"line": 2, "column": 4, "severity": "error", "kind": "unknown-word", "text": "unknown word PRNT"},
        {"line": 3, "column": 4, "severity": "warning", "kind": "no-effect", "text": "this statement does nothing"}]}])");
    EXPECT_EQ(nlohmann::json::parse(outcome.out), expected);
}

} // namespace
} // namespace quillon::testing
