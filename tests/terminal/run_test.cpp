// `quillon-cli run` as a program: what it prints (run.txt), when, and how it ends.
#include "tests/support/cases_file.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>

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
    return with_bars(outcome.out) + (outcome.status != 0 ? std::to_string(outcome.status) + " " : "") +
           outcome.err.substr(0, outcome.err.find('\n'));
}

/// Runs a listing that comes through a pipe.
Outcome run_text(const std::string& listing, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"run", "/dev/stdin"});
    return run_program(options, listing);
}

/// Reads as many bytes as are expected, from a program that never ends.
std::string printed_on_the_way(const FileCase& row) {
    const TemporaryFile listing(listing_of(row.input));
    ChildProcess program({"run", listing.path});
    return with_bars(program.read(row.expected.size()));
}

std::string outcome_of_call(const FileCase& row) {
    const TemporaryFile good("[P0]\n10 PRINT 1\n");
    std::vector<std::string> call;
    std::istringstream words(row.input);
    for (std::string word; words >> word;)
        call.push_back(word.starts_with("GOOD") ? good.path + word.substr(4) : word);
    const Outcome outcome = run_program(call);
    return outcome.status == 2 && outcome.out.empty() && !outcome.err.empty() ? "refused" : told(outcome);
}

TEST(Run, PrintsWhatIsShown) {
    expect_cases("terminal/run.txt",
                 {{"to the end", [](const FileCase& row) { return told(run_text(listing_of(row.input))); }},
                  {"on the way", printed_on_the_way},
                  {"a call", outcome_of_call}});
    EXPECT_EQ(told(run_text("[P0]\n10 PRINT \"\x7F\xB1\t\xFF\"\n")), "◀███|");
}

TEST(Run, TellsErrorsOfTheProgram) {
    const Outcome outcome = run_text("[P0]\n10 PRINT 1/3\n20 A=2:PRINT A*3\n30 PRINT 1/0\n");
    EXPECT_EQ(told(outcome), " 0.3333333333| 6|1 ERR3 P0-30");
    EXPECT_EQ(outcome.err.find('\r'), std::string::npos);

    const TemporaryFile catalogue("[SYSTEM]\nM_004=\x96\xA2\x92\xE8\x8B\x60\n[DLG_ERRINFO]\nM_001=where\nM_005=text\n");
    const Outcome detailed = run_text("[P0]\n10 PRINT \"AB\";:HELLO \"\\pi\xB1\"\n", {"--catalogue", catalogue.path});
    EXPECT_EQ(told(detailed), "AB|1 ERR2 P0-10");
    const std::string head = "ERR2 P0-10\n\u672A\u5B9A\u7FA9:\"hello\"\n\nwhere\n:0\n:0\n:\"10\"\n";
    EXPECT_EQ(detailed.err.substr(0, head.size()), head);
    EXPECT_NE(detailed.err.find(R"(::::HELLO "\pi?")"), std::string::npos) << detailed.err;
}

TEST(Run, TakesOptions) {
    const std::string pages = "[P2]\n10 PRINT \"P2\"\n[P1]\n[P5]\n10 PRINT \"P5\"\n";
    const std::string ending = "[P0]\n10 PRINT \"A\"\n20 B=1\n", endless = "[P0]\n10 PRINT \"A\";\n20 GOTO 20\n";
    const std::tuple<std::string, std::string, const char*> rows[] = {
        {pages, "", "P2|"}, // the first one that has lines
        {pages, "--page=5", "P5|"},
        {pages, "--page=3", "quillon-cli: the listing has no program in area P3"},
        // two statements, the wait, and the tick that finds the end
        {ending, "--max-ticks=0", "4 "},
        {ending, "--max-ticks=1", "A|4 "},
        {ending, "--max-ticks=3", "A|4 "},
        {ending, "--max-ticks=10", "A|"},
        {endless, "--max-ticks=100000", "A|4 "},
        {ending, "--seed=0", "A|"},
        {ending, "--seed=4294967295", "A|"}};
    for (const auto& [listing, option, expected] : rows) {
        const Outcome outcome = run_text(listing, option.empty() ? std::vector<std::string>{} : std::vector{option});
        EXPECT_EQ(told(outcome), expected) << option;
    }
}

TEST(Run, TellsWhyAListingDoesNotLoad) {
    const TemporaryFile catalogue("[SYSTEM]\nM_001=too large\nM_003=no listing\nM_020=bad line\n");
    const std::pair<std::string, const char*> rows[] = {{"[P0]\n10 A=1\nA=2\n", "bad line:3 LINE"},
                                                        {"", "no listing"},
                                                        {"# only a comment\n", "no listing"},
                                                        {std::string((std::size_t{16} << 20) + 1, '#'), "too large"}};
    for (const auto& [listing, message] : rows) {
        const Outcome outcome = run_text(listing, {"--catalogue", catalogue.path});
        EXPECT_TRUE(told(outcome).starts_with("2 ")) << told(outcome);
        EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
        EXPECT_TRUE(outcome.err.ends_with('\n')) << outcome.err;
    }
}

TEST(Run, FeedsInputAndKeys) {
    const std::tuple<std::string, std::string, std::string, std::string> rows[] = {
        {"INPUT \"N\",A,B$\nPRINT A*2;B$", "21\nTEXT\n", "", "N?|?| 42TEXT|"},
        {"INPUT A$,B\nPRINT A$;LEN(A$);B", "XY\r\n5", "", "?|?|XY 2 5|"}, // CR, and no end of the last line
        {"INPUT A:PRINT A", "\n3*\n2*4\n", "", "?| 8|"},                  // empty, and no number
        {"INPUT A$:PRINT LEN(A$);A$", "π≤\n", "", "?| 2π≤|"},
        {"INPUT A$:PRINT A$", "äb\n", "", "?|?b|"}, // what the machine does not have
        {"INPUT A:PRINT A", "π\n", "", "?| 3.141592654|"},
        {"INPUT A$,B:PRINT LEN(A$);B", std::string(5000, 'X') + "\n7\n", "", "?|?| 31 7|"},
        {"PRINT \"HI\":INPUT A,B", "1\n", "", "HI|?|?|3 "}, // there is no more input
        {"FOR I=1 TO 4:PRINT KEY$;\"/\";:NEXT I", "", "aπ ", "a/π/ //|"},
        {"FOR I=1 TO 4:PRINT KEY$;\"/\";:NEXT I", "", "", "////|"},
        {"FOR I=1 TO 500:NEXT I\nA$=KEY$+KEY$:PRINT A$;KEY$", "", "xyz", "xxy|"}, // a key waits until it is read
        {"INPUT A:B$=KEY$:INPUT C\nPRINT A;B$;C", "1\n2\n", "k", "?|?| 1k 2|"}};
    for (const auto& [program, input, keys, expected] : rows) {
        const TemporaryFile listing(listing_of(program));
        const Outcome outcome = run_program({"run", listing.path, "--max-ticks", "20000", "--keys", keys}, input);
        EXPECT_EQ(told(outcome), expected) << program;
    }
}

TEST(Run, EndsQuietlyWhenNobodyReads) {
    const TemporaryFile listing("[P0]\n10 PRINT \"AB\"\n20 GOTO 10\n");
    ChildProcess program({"run", listing.path});
    EXPECT_EQ(program.read(3).substr(0, 3), "AB\n");
    program.close_output();
    const Outcome outcome = program.finish();
    EXPECT_LT(outcome.status, 128) << "ended by a signal";
    EXPECT_EQ(outcome.err, "");
}

TEST(Run, ShowsItsVersion) {
    EXPECT_EQ(run_program({"--version"}).status, 0);
    EXPECT_EQ(run_program({}).status, 2);
    EXPECT_EQ(run_program({"run", ""}).status, 2);
}

} // namespace
} // namespace quillon::testing
