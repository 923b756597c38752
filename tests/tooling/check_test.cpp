// SPDX-License-Identifier: MIT
// What `check` finds: for each kind of finding a listing and its report, and listings that have none (check.txt).
#include "core/controls.h"
#include "tests/support/cases_file.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"
#include "tests/support/test_machine.h"

#include "shell/commands.h"
#include "tooling/check.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <random>
#include <regex>
#include <tuple>

namespace quillon::testing {
namespace {

constexpr std::string_view ALL_WORDS[] = {
#define FINDING(name, word) word,
#include "tooling/check_findings.def"
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

/// A text with what it says of repetitions carried out: "{3*AB}" is "ABABAB".
std::string expanded(std::string text) {
    const std::regex repetition(R"(\{(\d+)\*([^}]*)\})");
    for (std::smatch found; std::regex_search(text, found, repetition);)
        text.replace(static_cast<std::size_t>(found.position()), static_cast<std::size_t>(found.length()),
                     repeated(found.str(2), std::stoi(found.str(1))));
    return text;
}

TEST(Check, FindsEachKindAndNothingElse) {
    std::string reports;
    const auto report_of = [&reports](const std::string& listing) {
        const std::string report = found_in(listing);
        reports += report + "\n";
        return report;
    };
    expect_cases(
        "tooling/check.txt",
        {{"whole listings", [&](const FileCase& row) { return report_of(expanded(row.input) + "\n"); }},
         {"line 10 of P0", [&](const FileCase& row) { return report_of("[P0]\n10 " + expanded(row.input) + "\n"); }}});
    std::string many_lines = "[P0]\n";
    for (int i = 1; i <= 513; ++i)
        many_lines += std::to_string(i) + " PRINT\n";
    EXPECT_EQ(report_of(many_lines), "514:1 error too-many-lines");
    std::string many_loops = "[P0]\n";
    for (int i = 1; i <= 500; ++i)
        many_loops +=
            std::to_string(i) + " FOR A=1 TO 2:NEXT A:FOR A=1 TO 2:NEXT A:FOR A=1 TO 2:NEXT A:FOR A=1 TO 2:NEXT A\n";
    EXPECT_EQ(report_of(many_loops), "");
    many_loops += many_loops;
    many_loops.replace(many_loops.rfind("[P0]"), 4, "[P1]");
    EXPECT_EQ(report_of(many_loops), "1002:78 warning loops-not-checked");
    EXPECT_EQ(report_of(std::string("\xFF\xFE[\0P\0000\0]\0", 11)), "1:1 error utf-16");
    EXPECT_EQ(report_of(std::string("[P0]\n10 PRINT\n20 \0PRINT\n", 25)), "3:4 warning cut-by-nul");
    EXPECT_EQ(report_of(std::string("[P0]\n10 PRINT\n\0\0\x1A", 17)), "");
    EXPECT_EQ(report_of("[P0]\r\n10 PRINT \"A\":REM anything (\r\n20 SAVE \"A:B\":PASS 1/:A=SIN 30*2\r\n"), "");
    for (const std::string_view word : ALL_WORDS)
        EXPECT_NE(reports.find(word), std::string::npos) << word;
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
    const std::tuple<std::vector<std::string>, int, std::string> rows[] = {
        {{"check", good.path}, 0, ""},
        {{"check", odd.path}, 0, of_odd},
        {{"check", good.path, bad.path, odd.path}, 1, of_bad + of_odd},
        {{"check", missing, bad.path}, 2, of_bad},
        {{"check", bad.path, QUILLON_EXAMPLES}, 2, of_bad}, // a folder
        {{"check"}, 2, ""},
    };
    for (const auto& [arguments, status, out] : rows) {
        const Outcome outcome = run_program(arguments);
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.out, out);
        EXPECT_EQ(outcome.err.empty(), status != 2);
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

// --- On listings that were changed at random: it never fails, what it passes loads, and what it refuses the machine
// refuses ---

// clang-format off
constexpr const char* PIECES[] = {
    "[P1]", "\n", ":", "\"", "(", ")", ",", ";", "#", "=", "10 ", "20", "A", "B$", "$", "1.5", "-", "+", "/0", "<>",
    "PRINT ", "GOTO ", "GOSUB ", "FOR I=1 TO 3", "NEXT I", "IF A=1 THEN ", "DATA 1,\"X\"", "READ A", "INPUT ", "\\pi",
    "STOP", "END", "RETURN", "REM ", "MID$(", "SIN ", "CSR ", "LET ", "SET F ", "MODE ", "BEEP ", "ON A ", "\x01", "\xFF",
};

/// Statements that end without waiting for anything, one to a line.
constexpr const char* STATEMENTS[] = {
    "A=B+1*(2-C)", "A$=B$+\"XY\"", "$=MID$(1,2)", "LET A(3)=5", "PRINT A;\"X\";B$", "GOTO 20", "GOSUB 40",
    "FOR I=1 TO 3 STEP 2", "READ A,B$", "RESTORE 30", "MODE 4", "SET F 3", "BEEP 1", "BEEPS 3,4,5", "A=LEN(\"AB\"+$)",
    "A=RND(5.5,1)", "A$=STR$(5)+HEX$(255)", "A=NPR(5,2)+SQR 4", "PRINT CSR 4;PI", "A=DEG(1,2,3)", "A=VAL(\"12\")", "STOP",
    "VAC", "GLOAD \"X\"", "RUN 20",
};
// clang-format on

/// Changes to texts, the same on every run.
struct Mutator {
    std::mt19937_64 engine{740};

    std::size_t below(std::size_t n) { return n == 0 ? 0 : engine() % n; }

    std::string mutate(std::string text) {
        for (std::size_t count = 1 + below(4); count > 0; --count) {
            const std::size_t at = below(text.size() + 1);
            const std::size_t length = std::min(below(12), text.size() - at);
            switch (below(5)) {
            case 0: text.erase(at, length); break;
            case 1: text.insert(at, PIECES[below(std::size(PIECES))]); break;
            case 2: text.replace(at, std::min<std::size_t>(1, length), 1, static_cast<char>(below(256))); break;
            case 3: text.insert(below(text.size() + 1), text.substr(at, length)); break;
            default: text.replace(at, length, PIECES[below(std::size(PIECES))]); break;
            }
        }
        return text;
    }
};

std::vector<std::string> example_listings() {
    std::vector<std::string> listings;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_EXAMPLES)) {
        if (entry.path().extension() == ".bas")
            listings.push_back(bytes_of(entry.path()));
    }
    std::sort(listings.begin(), listings.end());
    return listings;
}

bool is_load_fault(const Finding& finding) { return finding.kind <= FindingKind::TOO_MUCH_DATA; }

TEST(CheckMutations, WhatPassesLoads) {
    constexpr int COUNT = 10000;
    const std::vector<std::string> listings = example_listings();
    Mutator mutator;
    TestMachine t;
    int loaded = 0, passed = 0;
    for (int i = 0; i < COUNT; ++i) {
        const std::string listing = mutator.mutate(listings[mutator.below(listings.size())]);
        const CheckReport report = check_listing(listing);
        const bool loads = load_listing_text(t.m, listing) == LoadResult::LOADED;
        const bool faulty = std::any_of(report.findings.begin(), report.findings.end(), is_load_fault);
        ASSERT_EQ(loads, !faulty) << listing;
        loaded += loads ? 1 : 0;
        passed += report.errors == 0 ? 1 : 0;
    }
    // Enough of each sort to tell something.
    EXPECT_GT(passed, COUNT / 10);
    EXPECT_GT(loaded - passed, COUNT / 10);
    EXPECT_GT(COUNT - loaded, COUNT / 10);
}

std::string program_of(const std::string& statement) {
    return "[P0]\n10 " + statement + "\n20 END\n30 DATA 1,2,3,4\n40 RETURN\n";
}

/// Whether the machine refuses a program's first statement.
bool is_refused(TestMachine& t, const std::string& statement) {
    if (!t.load(program_of(statement)))
        return true;
    // Nothing of the programs before, such as a format that fills the display.
    clear_variables(t.m);
    t.m.settings.set_e_digits = -1;
    t.m.settings.set_f_digits = -1;
    run_host_command(*t.simulator, COMMAND_RUN);
    for (int i = 0; i < 40; ++i)
        t.exe();
    return failed(t.m) || !t.detail_id().empty();
}

TEST(CheckMutations, WhatIsAnErrorIsRefused) {
    constexpr int COUNT = 4000;
    Mutator mutator;
    TestMachine t;
    int errors = 0;
    for (int i = 0; i < COUNT; ++i) {
        const std::string statement = mutator.mutate(STATEMENTS[mutator.below(std::size(STATEMENTS))]);
        // What runs behind another statement, or not at all, may never be come to.
        if (statement.find_first_of(std::string_view(":\n\r\x1B\0", 5)) != std::string::npos)
            continue;
        const CheckReport report = check_listing(program_of(statement));
        const bool depends = statement.find("IF") != std::string::npos || statement.find("ON") != std::string::npos;
        if (report.errors == 0 || depends)
            continue;
        ++errors;
        EXPECT_TRUE(is_refused(t, statement)) << statement << "\n" << report.findings[0].text;
    }
    EXPECT_GT(errors, COUNT / 4);
}

} // namespace
} // namespace quillon::testing
