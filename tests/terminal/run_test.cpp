// `quillon-cli run` as a program: what it prints, when, and how it ends.
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace quillon::testing {
namespace {

/// P0 with these lines, "|" between them; their numbers are 10, 20 and so on.
std::string listing_of(const std::string& program) {
    std::istringstream lines(program);
    std::string listing = "[P0]\n";
    int number = 0;
    for (std::string line; std::getline(lines, line, '|');)
        listing += std::to_string(number += 10) + " " + line + "\n";
    return listing;
}

std::string with_bars(std::string text) {
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

/// Runs a listing that comes through a pipe.
Outcome run_text(const std::string& listing, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"run", "/dev/stdin"});
    return run_program(options, listing);
}

TEST(Run, PrintsWhatIsShown) {
    struct Row {
        const char* program;
        const char* output;
    };
    const Row rows[] = {
        {"PRINT 1/3|A=2:PRINT A*3", " 0.3333333333| 6|"},
        {R"(PRINT "AB","CD"|PRINT "EF")", "AB|CD|EF|"},
        {R"(PRINT "AB";1;|A=1:PRINT "CD")", "AB 1CD|"},
        {R"(PRINT "AB";)", "AB|"}, // a line that is not finished gets its line feed
        {"A=1", ""},
        // lines that scroll are whole
        {R"(PRINT "ABCDEFGHIJKLM"|PRINT "N")", "ABCDEFGHIJKLM|N|"},
        {R"(PRINT "ABCDEFGHIJ";"KLMNOP";"QRS")", "ABCDEFGHIJKLMNOPQRS|"},
        {R"(PRINT "ABCDEFGHIJKL";"MN";:PRINT "O")", "ABCDEFGHIJKLMNO|"},
        {R"(PRINT "AAAAAAAAAAAAAAAAAAAAAAAA";"AAAAAAAAAAAA")", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA|"},
        {R"(PRINT "ABCDEFGHIJKLMNOP","ABCDEFGHIJKLMNOP")", "ABCDEFGHIJKLMNOP|ABCDEFGHIJKLMNOP|"},
        {"FOR I=1 TO 20:PRINT I;|NEXT I", " 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20|"},
        {R"(PRINT "AB          ";"C")", "AB          C|"},
        // equal lines one after the other are two lines; blanks at the end belong to a line
        {R"(PRINT "A"|PRINT "A")", "A|A|"},
        {R"(PRINT "A ";:PRINT " ";"B  ")", "A  B  |"},
        {R"(PRINT " "|PRINT ""|PRINT "A")", " ||A|"},
        // a bare PRINT ends a line
        {R"(PRINT:PRINT "AB";:PRINT|PRINT "AB";:PRINT)", "AB|AB|"},
        {R"(PRINT "ABCDEFGHIJKLMNOP";:PRINT|PRINT "CD")", "ABCDEFGHIJKLMNOP|CD|"},
        // STOP goes on at once, on a cleared line
        {R"(PRINT "AB";:STOP:STOP:PRINT "CD")", "AB|CD|"},
        {R"(PRINT "AB"|STOP|PRINT "CD")", "AB|CD|"},
        // other ends
        {R"(PRINT "AB";:END|PRINT "CD")", "AB|"},
        {R"(PRINT "AB";:GOTO #7)", "AB|"},
        {R"(PRINT "AB";:COMMAND)", "AB|"},
        // the machine's characters as the font draws them
        {R"(PRINT "\pi\ci\bx\ex\em\bs\ua\le\\~")", "π○█ᴇᴇ-\\↑≤¥~|"},
        {"PRINT \"\x7F\xB1\t\xFF\"", "◀███|"},
        {"PRINT 1EX50;2EM50*3", " 1ᴇ50 6ᴇ-50|"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        const Outcome outcome = run_text(listing_of(row.program));
        EXPECT_EQ(with_bars(outcome.out), row.output);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(Run, WritesOutputAsItComes) {
    // None of these programs ends: what is read has come before the end.
    struct Row {
        const char* program;
        const char* output;
    };
    const Row rows[] = {
        {R"(PRINT "AB";|GOTO 20)", "AB"},         {R"(PRINT "AB";"CD";:PRINT "E";|GOTO 20)", "ABCDE"},
        {R"(PRINT "AB"|GOTO 20)", "AB\n"},        {R"(PRINT "ABCDEFGHIJKLMNOP";|GOTO 20)", "ABCDEFGHIJKLMNOP"},
        {R"(PRINT "AB";:PRINT|GOTO 20)", "AB\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        const TemporaryFile listing(listing_of(row.program));
        ChildProcess program({"run", listing.path});
        EXPECT_EQ(program.read(std::string_view(row.output).size()), row.output);
    }
}

TEST(Run, TellsErrorsOfTheProgram) {
    const Outcome outcome = run_text("[P0]\n10 PRINT 1/3\n20 A=2:PRINT A*3\n30 PRINT 1/0\n");
    EXPECT_EQ(outcome.out, " 0.3333333333\n 6\n");
    EXPECT_EQ(outcome.err.substr(0, outcome.err.find('\n')), "ERR3 P0-30");
    EXPECT_EQ(outcome.err.find('\r'), std::string::npos);
    EXPECT_EQ(outcome.status, 1);

    const TemporaryFile catalogue("[SYSTEM]\nM_004=\x96\xA2\x92\xE8\x8B\x60\n[DLG_ERRINFO]\nM_001=where\nM_005=text\n");
    const Outcome detailed = run_text("[P0]\n10 PRINT \"AB\";:HELLO \"\\pi\xB1\"\n", {"--catalogue", catalogue.path});
    EXPECT_EQ(detailed.out, "AB\n");
    const std::string head = "ERR2 P0-10\n\u672A\u5B9A\u7FA9:\"hello\"\n\nwhere\n:0\n:0\n:\"10\"\n";
    EXPECT_EQ(detailed.err.substr(0, head.size()), head);
    EXPECT_NE(detailed.err.find(R"(::::HELLO "\pi?")"), std::string::npos) << detailed.err;
    EXPECT_EQ(detailed.status, 1);
}

TEST(Run, SelectsAPage) {
    const std::string listing = "[P2]\n10 PRINT \"P2\"\n[P1]\n[P5]\n10 PRINT \"P5\"\n";
    EXPECT_EQ(run_text(listing).out, "P2\n") << "the first one that has lines";
    EXPECT_EQ(run_text(listing, {"--page", "5"}).out, "P5\n");
    const Outcome empty = run_text(listing, {"--page=3"});
    EXPECT_EQ(empty.out, "");
    EXPECT_EQ(empty.status, 0);
}

TEST(Run, StopsAfterTheGivenTicks) {
    struct Row {
        const char* ticks;
        int status;
        const char* output;
    };
    // Two statements, the wait, and the tick that finds the end.
    const Row rows[] = {{"0", 4, ""}, {"1", 4, "A\n"}, {"3", 4, "A\n"}, {"10", 0, "A\n"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.ticks);
        const Outcome outcome = run_text("[P0]\n10 PRINT \"A\"\n20 B=1\n", {"--max-ticks", row.ticks});
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.output);
    }
    const Outcome endless = run_text("[P0]\n10 PRINT \"A\";\n20 GOTO 20\n", {"--max-ticks", "100000"});
    EXPECT_EQ(endless.status, 4);
    EXPECT_EQ(endless.out, "A\n");
}

TEST(Run, RefusesWrongCalls) {
    const TemporaryFile good("[P0]\n10 PRINT 1\n");
    const std::vector<std::string> calls[] = {
        {},
        {"fly"},
        {"run"},
        {"run", good.path, good.path},
        {"run", good.path, "--page", "10"},
        {"run", good.path, "--page", "-1"},
        {"run", good.path, "--page", "x"},
        {"run", good.path, "--page"},
        {"run", good.path, "--max-ticks", "-1"},
        {"run", good.path, "--max-ticks", "1.5"},
        {"run", good.path, "--seed", "4294967296"},
        {"run", good.path, "--seed", "-1"},
        {"run", good.path, "--catalogue", good.path + ".missing"},
        {"run", good.path, "--speed", "5"},
        {"run", good.path + ".missing"},
        {"run", "/"},
        {"run", ""},
        {"drive", "x"},
    };
    for (const auto& call : calls) {
        std::string joined;
        for (const std::string& word : call)
            joined += word + " ";
        SCOPED_TRACE(joined);
        const Outcome outcome = run_program(call);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
}

TEST(Run, TellsWhyAListingDoesNotLoad) {
    const TemporaryFile catalogue("[SYSTEM]\nM_001=too large\nM_003=no listing\nM_020=bad line\n");
    struct Row {
        std::string listing;
        const char* message;
    };
    const Row rows[] = {
        {"[P0]\n10 A=1\nA=2\n", "bad line:3 LINE"},
        {"", "no listing"},
        {"# only a comment\n", "no listing"},
        {std::string((std::size_t{16} << 20) + 1, '#'), "too large"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = run_text(row.listing, {"--catalogue", catalogue.path});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err.find(row.message), std::string::npos) << outcome.err;
        EXPECT_TRUE(outcome.err.ends_with('\n')) << outcome.err;
    }
}

TEST(Run, TakesASeed) {
    for (const char* seed : {"0", "1", "4294967295"}) {
        const Outcome outcome = run_text("[P0]\n10 PRINT 1\n", {"--seed", seed});
        EXPECT_EQ(outcome.status, 0) << seed;
        EXPECT_EQ(outcome.out, " 1\n") << seed;
    }
}

TEST(Run, FeedsInputAndKeys) {
    struct Row {
        const char* program;
        std::string input;
        const char* keys;
        const char* output;
        int status = 0;
    };
    const Row rows[] = {
        {R"(INPUT "N",A,B$|PRINT A*2;B$)", "21\nTEXT\n", "", "N?|?| 42TEXT|"},
        {"INPUT A$,B|PRINT A$;LEN(A$);B", "XY\r\n5", "", "?|?|XY 2 5|"}, // CR, and no end of the last line
        {"INPUT A:PRINT A", "\n3*\n2*4\n", "", "?| 8|"},                 // empty, and no number
        {"INPUT A$:PRINT LEN(A$);A$", "π≤\n", "", "?| 2π≤|"},
        {"INPUT A$:PRINT A$", "äb\n", "", "?|?b|"}, // what the machine does not have
        {"INPUT A:PRINT A", "π\n", "", "?| 3.141592654|"},
        {"INPUT A$,B:PRINT LEN(A$);B", std::string(5000, 'X') + "\n7\n", "", "?|?| 31 7|"},
        {R"(PRINT "HI":INPUT A,B)", "1\n", "", "HI|?|?|", 3}, // there is no more input
        {R"(FOR I=1 TO 4:PRINT KEY$;"/";:NEXT I)", "", "aπ ", "a/π/ //|"},
        {R"(FOR I=1 TO 4:PRINT KEY$;"/";:NEXT I)", "", "", "////|"},
        {"FOR I=1 TO 500:NEXT I|A$=KEY$+KEY$:PRINT A$;KEY$", "", "xyz", "xxy|"}, // a key waits until it is read
        {"INPUT A:B$=KEY$:INPUT C|PRINT A;B$;C", "1\n2\n", "k", "?|?| 1k 2|"},
    };
    for (const Row& row : rows) {
        const TemporaryFile listing(listing_of(row.program));
        const Outcome outcome =
            run_program({"run", listing.path, "--max-ticks", "20000", "--keys", row.keys}, row.input);
        EXPECT_EQ(with_bars(outcome.out), row.output) << row.program;
        EXPECT_EQ(outcome.status, row.status) << row.program;
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

TEST(Run, ShowsItsHelpAndVersion) {
    const Outcome help = run_program({"run", "--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--page", "--max-ticks", "--seed", "--catalogue"})
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    EXPECT_EQ(run_program({"--version"}).status, 0);
}

} // namespace
} // namespace quillon::testing
