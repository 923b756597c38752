// SPDX-License-Identifier: MIT
// Programs in text files, and what they show, leave and report. The files' headings are the tests' below:
//
//   shows    the lines that stood in an EXE wait, with "|" between them
//   fails    its error, or "ok", or "ended" with the detail that is left
//   leaves   its error if it has one, and the machine afterwards: variables, open calls and loops, MODE, SET
//
// Among marked lines: the program stands in line 1 of P0, before lines that tell which of them was reached.
#include "tests/statements/changes.h"
#include "tests/support/cases_file.h"
#include "tests/support/outcomes.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

std::string with_marks(const std::string& statements) {
    return "1 " + statements +
           "\n2 PRINT \"NEXT\":END\n10 PRINT \"TEN\":END\n11 PRINT \"ELEVEN\":END\n20 PRINT \"TWENTY\":END\n"
           "[P3]\n5 PRINT \"P3\":END\n10 PRINT \"P3-10\":END\n[P4]\n[P9]\n100 PRINT \"P9\"\n200 RETURN\n";
}

std::string shown_by(const std::string& program) {
    TestMachine t;
    t.start(program);
    std::string joined;
    for (const std::string& line : t.run_through())
        joined += (joined.empty() ? "" : "|") + line;
    return joined;
}

std::string end_of(TestMachine& t, const std::string& program) {
    t.start(program);
    t.run_through();
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
    return failure_of(t);
}

std::string failure_among_marks(const FileCase& row) {
    TestMachine t;
    const std::string end = end_of(t, with_marks(row.input));
    EXPECT_EQ(t.m.program.gosub_depth, 0);
    return end;
}

std::string failure(const FileCase& row) {
    TestMachine t;
    return end_of(t, row.input);
}

std::string left_by(const FileCase& row) {
    TestMachine t;
    const std::string end = end_of(t, row.input);
    return end + changes(t.m);
}

const std::map<std::string, OutcomeOfCase> OUTCOMES = {
    {"shows", [](const FileCase& row) { return shown_by(row.input); }},
    {"shows, among marked lines", [](const FileCase& row) { return shown_by(with_marks(row.input)); }},
    {"fails", failure},
    {"fails, among marked lines", failure_among_marks},
    {"leaves", left_by},
};

void expect_programs(const std::string& file) {
    expect_cases(file, [](const FileCase& row) {
        return OUTCOMES.contains(row.heading) ? OUTCOMES.at(row.heading)(row) : "no such heading: " + row.heading;
    });
}

TEST(Programs, Jump) { expect_programs("statements/jumps.txt"); }
TEST(Programs, Decide) { expect_programs("statements/conditions.txt"); }
TEST(Programs, Loop) { expect_programs("statements/loops.txt"); }
TEST(Programs, Print) { expect_programs("statements/print.txt"); }
TEST(Programs, ReadData) { expect_programs("statements/data.txt"); }
TEST(Programs, SayOtherWords) { expect_programs("statements/words.txt"); }

} // namespace
} // namespace quillon::testing
