// SPDX-License-Identifier: MIT
// `quillon-cli run` as a program: what it prints (run.txt), when, and how it ends.
#include "protocols/shown_lines.h"
#include "tests/support/cases_file.h"
#include "tests/support/child_process.h"
#include "tests/support/outcomes.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace quillon::testing {
namespace {

/// P0 with these lines; their numbers are 10, 20 and so on.
std::string listing_of(const std::string& program) {
    std::istringstream lines(program);
    std::string listing = "[P0]\n";
    int number = 0;
    for (std::string line; std::getline(lines, line);)
        listing += std::to_string(number += 10) + " " + line + "\n";
    return listing;
}

std::string with_bars(std::string text) {
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

/// What was printed, the exit status where it is not 0, and the first line of the errors.
std::string told(const Outcome& outcome) {
    return with_bars(outcome.out) + (outcome.status != 0 ? "(" + std::to_string(outcome.status) + ")" : "") +
           outcome.err.substr(0, outcome.err.find('\n'));
}

/// Runs a listing that comes through a pipe.
Outcome run_text(const std::string& listing, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"run", "-"});
    return run_program(options, listing);
}

/// Reads as many bytes as are expected, from a program that never ends.
std::string printed_on_the_way(const FileCase& row) {
    const TemporaryFile listing(listing_of(row.input));
    ChildProcess program({"run", listing.path});
    return with_bars(program.read(row.expected.size()));
}

/// The parts of a case's input, which have " < " between them.
std::vector<std::string> parts_of(std::string text) {
    std::vector<std::string> parts;
    for (std::size_t end = 0; (end = text.find(" < ")) != std::string::npos; text.erase(0, end + 3))
        parts.push_back(text.substr(0, end));
    parts.push_back(text);
    return parts;
}

std::string told_with_options(const FileCase& row) {
    const std::vector<std::string> parts = parts_of(row.input);
    return told(run_text(parts[0] + "\n", {parts[1]}));
}

/// A text of a table: "\xHH" for a byte.
std::string with_bytes(std::string text) {
    for (std::size_t i = 0; (i = text.find("\\x", i)) != std::string::npos; ++i)
        text.replace(i, 4, 1, static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16)));
    return text;
}

/// A program, the lines of its input with "|" behind each, and its keys with "_" for a blank.
std::string told_when_fed(const FileCase& row) {
    std::vector<std::string> parts = parts_of(with_bytes(row.input));
    parts.resize(3);
    std::ranges::replace(parts[1], '|', '\n');
    std::ranges::replace(parts[2], '_', ' ');
    const TemporaryFile listing(listing_of(parts[0]));
    std::vector<std::string> call{"run", listing.path, "--max-ticks", "20000", "--keys", parts[2]};
    if (row.heading == "echoed")
        call.emplace_back("--echo");
    return told(run_program(call, parts[1]));
}

/// A call and what it says: GOOD is a listing, and the program's name is left out.
std::string outcome_of_call(const FileCase& row) {
    const TemporaryFile good("[P0]\n10 PRINT 1\n");
    std::vector<std::string> call;
    std::istringstream words(with_bytes(row.input));
    for (std::string word; words >> word;)
        call.push_back(word.starts_with("GOOD") ? good.path + word.substr(4) : word);
    std::string text = told(run_program(call));
    for (const std::string& name : {good.path, std::string("quillon-cli: ")}) {
        for (std::size_t i = 0; (i = text.find(name, i)) != std::string::npos;)
            text.replace(i, name.size(), name == good.path ? "GOOD" : "");
    }
    return text;
}

TEST(Run, PrintsWhatIsShown) {
    expect_cases("terminal/run.txt",
                 {{"to the end", [](const FileCase& row) { return told(run_text(listing_of(row.input))); }},
                  {"on the way", printed_on_the_way},
                  {"options", told_with_options},
                  {"fed", told_when_fed},
                  {"echoed", told_when_fed},
                  {"a call", outcome_of_call}});
    const TemporaryFile lengths(listing_of("INPUT A$,B$,C\nPRINT LEN(A$);LEN(B$);C"));
    EXPECT_EQ(told(run_program({"run", lengths.path}, std::string(5000, 'X') + "\nXY\r\n7")), "?|?|?| 31 2 7|");
    EXPECT_EQ(told(run_text("[P0]\n10 PRINT \"\x7F\xB1\t\xFF\"\n")), "◀███|");
    EXPECT_EQ(told(run_program({"run", "/dev/stdin"}, "[P0]\n10 PRINT 1\n20 INPUT A\n")),
              " 1|?|(3)quillon-cli: P0-20: INPUT found no more input");
}

TEST(Run, TellsErrorsOfTheProgram) {
    const Outcome outcome = run_text("[P0]\r\n10 PRINT 1/3\r\n20 A=2:PRINT A*3\r\n30 PRINT 1/0:END\r\n");
    EXPECT_EQ(told(outcome), " 0.3333333333| 6|(1)ERR3 P0-30");
    EXPECT_NE(outcome.err.find("\n:::::END\n"), std::string::npos) << outcome.err;

    const TemporaryFile catalogue("[SYSTEM]\nM_004=\x96\xA2\x92\xE8\x8B\x60\n[DLG_ERRINFO]\nM_001=where\nM_005=text\n");
    const Outcome detailed = run_text("[P0]\n10 PRINT \"AB\";:HELLO \"\\pi\xB1\"\n", {"--catalogue", catalogue.path});
    EXPECT_EQ(told(detailed), "AB|(1)ERR2 P0-10");
    const std::string head = "ERR2 P0-10\n\u672A\u5B9A\u7FA9:\"hello\"\n\nwhere\n:0\n:0\n:\"10\"\n";
    EXPECT_EQ(detailed.err.substr(0, head.size()), head);
    EXPECT_NE(detailed.err.find(R"(::::HELLO "\pi?")"), std::string::npos) << detailed.err;
}

/// Names of files, listings and catalogues may hold what a terminal obeys: they print it as escapes.
TEST(Run, PrintsNothingThatATerminalObeys) {
    const TempFolder folder;
    const std::string odd = folder / "a\x1b[1m\n.bas";
    put_file(odd, "[P0]\n10 PRINT \"\x1b[2J\";:GLOAD \"G\x1b[3m\"\n20 HELLO \"\x1b]0;T\x07\x7f\"\n");
    const TemporaryFile catalogue("[SYSTEM]\nM_002=\x1b[4m\xc2\x9b@two\nM_004=\x1b[5m@two\n");
    const Outcome run = run_program({"run", odd, "--catalogue", catalogue.path});
    EXPECT_EQ(told(run), R"(█[2J|(1)quillon-cli: P0-10: \x1b[4m\xc2\x9b two "G\x1b[3m")");
    EXPECT_NE(run.err.find("\\x1b[5m\ntwo:\"hello\"\n"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("HELLO \"\\x1b]0;T\\x07\\x7f"), std::string::npos) << run.err;
    const Outcome check = run_program({"check", odd});
    EXPECT_TRUE(check.out.starts_with(folder.path + R"(/a\x1b[1m\x0a.bas:3:)")) << check.out;
    const Outcome json = run_program({"check", "--json", odd, folder / "\x7f\xc2\x9b"});
    for (const std::string& text : {run.out + run.err, check.out, json.out + json.err}) {
        EXPECT_EQ(text.find_first_of("\x1b\x07\x7f\r\t"), std::string::npos) << text;
        EXPECT_EQ(text.find("\xc2\x9b"), std::string::npos) << text;
    }
}

TEST(Run, TellsWhyAListingDoesNotLoad) {
    const TemporaryFile catalogue("[SYSTEM]\nM_001=too large\nM_003=no listing\nM_020=bad line\n");
    const std::string too_large((std::size_t{16} << 20) + 1, '#');
    for (const auto& [listing, message] :
         {std::pair<std::string, std::string>{"[P0]\n10 A=1\nA=2\n", "bad line:3 LINE\n"},
          {"", "no listing\n"},
          {too_large, "too large\n"}}) {
        const Outcome outcome = run_text(listing, {"--catalogue", catalogue.path});
        EXPECT_TRUE(told(outcome).starts_with("(2)") && outcome.err.ends_with(message)) << told(outcome);
    }
}

TEST(Run, EndsQuietlyWhenNobodyReads) {
    const TemporaryFile listing("[P0]\n10 PRINT \"AB\"\n20 GOTO 10\n");
    ChildProcess program({"run", listing.path});
    EXPECT_EQ(program.read(3).substr(0, 3), "AB\n");
    program.close_output();
    const Outcome outcome = program.finish();
    EXPECT_EQ(outcome.err + std::to_string(outcome.status), "0");
}

TEST(Run, ShowsItsVersion) {
    EXPECT_EQ(run_program({"--version"}).status, 0);
    EXPECT_EQ(run_program({}).status, 2);
    EXPECT_EQ(run_program({"run", ""}).status, 2);
}

// --- Following the display line: what a whole run cannot show ---

struct Followed : TestMachine {
    std::string written;
    ShownLines shown;
    explicit Followed(const char* program) {
        shown.write = [this](std::string_view text) { written += text; };
        start(program);
    }
    void follow() {
        tick();
        follow_display(shown, m);
    }
};

TEST(ShownLines, OfAProgramThatJoinsWithoutEndStaySmall) {
    Followed t("FOR I=1 TO 3000:PRINT I;:NEXT I");
    std::string expected;
    for (int i = 1; i <= 3000; ++i)
        expected += " " + std::to_string(i);
    while (t.m.run.run_state != STATE_ENDED) {
        t.m.keys.enter_request = true;
        t.follow();
        ASSERT_LT(t.shown.line.size(), 2000U);
    }
    EXPECT_EQ(t.written, expected) << "all of it before the end";
    finish_shown_lines(t.shown);
    EXPECT_EQ(t.written, expected + "\n");
}

TEST(ShownLines, AreHandedOnAnewWhenTheirColumnIsMovedBack) {
    Followed t("PRINT \"ABCDEF\";\nPRINT \"XY\";\nPRINT \"Z\"");
    t.follow();
    t.follow();
    EXPECT_EQ(t.written, "ABCDEF");
    t.m.screen.display_cursor = 2;
    for (const char* text : {"ABCDEF", "ABCDEF", "ABCDEF", "ABCDEF", "ABCDEF\nABXYZF\n"}) {
        t.follow();
        EXPECT_EQ(t.written, text);
    }
}

} // namespace
} // namespace quillon::testing
