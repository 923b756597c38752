// What `check` finds: for each kind of finding a listing and its report, and listings that have none (check.txt).
#include "tests/support/cases_file.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"

#include "terminal/check.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <regex>
#include <tuple>

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
        "terminal/check.txt",
        {{"whole listings", [&](const FileCase& row) { return report_of(expanded(row.input) + "\n"); }},
         {"line 10 of P0", [&](const FileCase& row) { return report_of("[P0]\n10 " + expanded(row.input) + "\n"); }}});
    std::string many_lines = "[P0]\n";
    for (int i = 1; i <= 513; ++i)
        many_lines += std::to_string(i) + " PRINT\n";
    EXPECT_EQ(report_of(many_lines), "514:1 error too-many-lines");
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

} // namespace
} // namespace quillon::testing
