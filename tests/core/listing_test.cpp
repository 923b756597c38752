// Loading listings: the format, every fault with its line, every kind of file, and what a failed load leaves.
#include "core/listing.h"

#include "core/interpreter.h"
#include "core/variables.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quillon::testing {
namespace {

/// "P0 10,20 P3 5": the used areas with the numbers of their lines.
std::string outline(const Machine& m) {
    std::string text;
    for (std::size_t n = 0; n < AREA_COUNT; ++n) {
        const ProgramArea& area = m.areas[n];
        if (!area.used) {
            EXPECT_EQ(area.line_count, 0);
            continue;
        }
        text += (text.empty() ? "P" : " P") + std::to_string(n);
        for (int i = 0; i < area.line_count; ++i)
            text += (i == 0 ? " " : ",") + std::to_string(area.lines[static_cast<std::size_t>(i)].number);
    }
    return text;
}

/// Listings in tables are on one line: "/" stands for a line feed, "^" for a CR.
std::string listing_of(std::string text) {
    std::replace(text.begin(), text.end(), '/', '\n');
    std::replace(text.begin(), text.end(), '^', '\r');
    return text;
}

class Listing : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    std::string outcome(std::string_view text) { return machine.load(text) ? outline(m) : system_message_of(m); }

    void expect_empty() {
        EXPECT_EQ(outline(m), "");
        EXPECT_TRUE(m.listing_text.empty());
        EXPECT_EQ(m.error_code, ERROR_NONE);
        EXPECT_EQ(m.run_state, STATE_SELECT);
        EXPECT_EQ(machine.display(), "");
        EXPECT_EQ(m.display_cursor, 0);
        EXPECT_EQ(m.data_index[0].kind, DataItem::END);
        EXPECT_EQ(m.data_pos, 0);
        EXPECT_EQ(m.for_depth + m.gosub_depth, 0);
        EXPECT_EQ(m.stmt_start, nullptr);
        EXPECT_STREQ(m.scan_ptr, "");
        EXPECT_STREQ(m.token_start, "");
        EXPECT_STREQ(m.saved_scan_ptr, "");
    }
};

TEST_F(Listing, Format) {
    const char* const rows = R"(
        P0                  [P0]             [P0]/            [P0] /# 10 A
        P0 P1               [P0]/[P1]/       [p1]/[P0]
        P0 10               [P0]/10 A/       [P0]/10 A        [p0]/10 A     [P0]/0000010 A/   [P0]/10 [P1]/   [P0]x10 A/
        P0 10,20            [P0]/10 A/20 B/  [P0]^/10 A^/20 B^/             [P0]/10 A/20 B    [P0]/10 A/^/20 B/^
        P0 10,20            # c/; c/' c/, c/! c/[P0]/# c/ ; c/10 A/'c/,[P9]/!c/20 B/#c
        P0 10,20            ^/ ^//[P0]///10 A//^/ 20 B///
        P0 0,1,9999999      [P0]/0 A/1 B/9999999 C/
        P0 10 P1 5          [P0]/10 A/[P1]/5 B/
        P0 3 P3 2 P9 1      [P9]/1 A/[P3]/2 B/[P0]/3 C/
    )";
    for (const Case& row : cases(rows)) {
        EXPECT_EQ(outcome(listing_of(row.text)), row.outcome) << row.text;
        EXPECT_EQ(m.run_state, STATE_SELECT);
    }
    const std::string texts[] = {
        "[P0]\n10 ",
        "[P0]\n\t10\tA\n",
        "\xEF\xBB\xBF[P0]\n10 A\n",
        "[P0]\n10 A\n\032garbage",
        "[P0]\n10 A\032\n20 B\n",
        std::string("[P0]\n10 A\n\0garbage", 18),
        std::string("[P0]\n10 A\0\n20 B\n", 16),
    };
    for (const std::string& text : texts)
        EXPECT_EQ(outcome(text), "P0 10") << text;
}

TEST_F(Listing, LinesAreTheTextBehindTheirNumber) {
    ASSERT_TRUE(machine.load("[P0]\r\n10 A=1\r\n20\tB:C\n30  \n40 D"));
    const auto& lines = m.areas[0].lines;
    EXPECT_STREQ(lines[0].text, " A=1\r");
    EXPECT_STREQ(lines[1].text, "\tB:C");
    EXPECT_STREQ(lines[3].text, " D");
    EXPECT_EQ(find_line(m, 30), 2);
    EXPECT_EQ(find_line(m, 40), 3);
    EXPECT_EQ(find_line(m, 35), -1);
    m.run_state = STATE_RUN;
    EXPECT_STREQ(select_area(m, 0), " A=1\r");
    EXPECT_EQ(select_area(m, 5), nullptr);
    EXPECT_EQ(failure_of(m), "ERR5 SYSTEM 24[Page:5]");
}

TEST_F(Listing, LinesAreFoundAgainAmongMany) {
    std::string text = "[P0]\n";
    for (int line = 0; line < LINES_PER_AREA; ++line)
        text += std::to_string(32 * line) + " A=1\n";
    ASSERT_EQ(load_listing_text(m, text), LoadResult::LOADED);
    for (int round = 0; round < 2; ++round) {
        for (int line = 0; line < LINES_PER_AREA; ++line) {
            EXPECT_EQ(find_line(m, 32 * line), line);
            EXPECT_EQ(find_line(m, 32 * line), line);
            EXPECT_EQ(find_line(m, 32 * line + 64 * LINES_PER_AREA), -1);
        }
    }
}

TEST_F(Listing, FaultsAndTheirLines) {
    std::vector<Case> faults = cases(R"(
        SYSTEM 3            /              ^//           # only/; comments/
        SYSTEM 20:1 LINE    [Px]/          [P            [P]0
        SYSTEM 20:2 LINE    #c/[P/
        SYSTEM 20:3 LINE    [P0]/10 A/PRINT/             [P0]^/10 A^/x         [P0]/10 A/-5 B/    [P0]/10 A/.5 B/
        SYSTEM 21:1 LINE    [P0            [P0/10 A/     [P10]/
        SYSTEM 22:3 LINE    [P1]/10 A/[P1]/              [P1]//[p1]
        SYSTEM 22:5 LINE    [P1]/10 A/[P2]//[P1]
        SYSTEM 23:1 LINE    10 A/          [Q0]/         [             x
        SYSTEM 23:3 LINE    // x/[P0]/     [P0]/10 A/[Q]/              [P0]/10 A/[
        SYSTEM 25:2 LINE    [P0]/10PRINT/  [P0]/10/      [P0]/10^/     [P0]/10         [P0]/10:A/
        SYSTEM 26(MAX:7):2 LINE            [P0]/00000001 B/            [P0]/99999999999999999999 B/
        SYSTEM 26(MAX:7):3 LINE            [P0]/10 A/12345678 B/
        SYSTEM 27:3 LINE    [P0]/10 A/10 B/
        SYSTEM 27:4 LINE    [P0]/10 A/20 B/15 C/
        SYSTEM 27:5 LINE    [P0]/10 A/# c//5 B
        SYSTEM 71           [P0]/10 DATA "A"B/
    )");
    faults.push_back({"", "SYSTEM 3"});
    faults.push_back({"\032[P0]\n", "SYSTEM 3"});
    faults.push_back({std::string("\177ELF\0\1\2", 7), "SYSTEM 23:1 LINE"});
    faults.push_back({"\xEF\xBB[P0]\n", "SYSTEM 23:1 LINE"});
    faults.push_back({"\n\xEF\xBB\xBF[P0]\n", "SYSTEM 23:2 LINE"});
    for (const Case& row : faults) {
        machine.load("[P0]\n10 DATA 1\n[P5]\n10 A\n");
        m.for_depth = m.gosub_depth = 1;
        m.scan_ptr = m.token_start = m.saved_scan_ptr = m.stmt_start = m.areas[0].lines[0].text;
        EXPECT_EQ(outcome(listing_of(row.text)), row.outcome) << row.text;
        expect_empty();
    }
}

std::string area_of(int area, int lines) {
    std::string text = "[P" + std::to_string(area) + "]\n";
    for (int i = 1; i <= lines; ++i)
        text += std::to_string(i) + " A\n";
    return text;
}

TEST_F(Listing, Limits) {
    std::string full;
    for (int area = 0; area < AREA_COUNT; ++area)
        full += area_of(area, LINES_PER_AREA);
    ASSERT_TRUE(machine.load(full));
    for (const ProgramArea& area : m.areas)
        EXPECT_EQ(area.line_count, LINES_PER_AREA);
    EXPECT_EQ(outcome(area_of(0, 513)), "SYSTEM 70(MAX:512)");
    EXPECT_EQ(outcome(area_of(0, 512) + "[P1]\n1 A\n").substr(0, 7), "P0 1,2,");
}

TEST_F(Listing, ALoadKeepsVariablesAndSettings) {
    store_number(m.variables[0], 5);
    m.run_page = 3;
    m.print_mode = 1;
    m.run_state = STATE_COMMAND;
    m.host.milliseconds = [] { return 4711U; };
    ASSERT_TRUE(machine.load("[P0]\n10 A\n"));
    EXPECT_EQ(m.variables[0].number, 5);
    EXPECT_EQ(m.run_page, 3);
    EXPECT_EQ(m.print_mode, 0);
    EXPECT_EQ(m.run_state, STATE_SELECT);
    EXPECT_EQ(m.random_seed, 4711U);
}

TEST_F(Listing, AdvancesLineByLine) {
    ASSERT_TRUE(machine.load(area_of(0, 512)));
    select_area(m, 0);
    for (int i = 1; i < 512; ++i)
        advance_line(m);
    EXPECT_EQ(m.cur_line, 511);
    EXPECT_STREQ(m.scan_ptr, " A");
    EXPECT_EQ(m.program_ended, 0);
    advance_line(m);
    EXPECT_EQ(m.program_ended, 1);
}

/// A folder of its own for each test, removed at its end.
class ListingFile : public Listing {
protected:
    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quillon-listing-" + std::to_string(getpid()));

    void SetUp() override { std::filesystem::create_directories(folder); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string file(const char* name, std::string_view text) {
        std::ofstream(folder / name, std::ios::binary) << text;
        return (folder / name).string();
    }
};

TEST_F(ListingFile, IsReadWhole) {
    EXPECT_EQ(load_listing(m, file("a.txt", "[P0]\n10 A\n")), LoadResult::LOADED);
    EXPECT_EQ(outline(m), "P0 10");
    EXPECT_EQ(load_listing(m, file("b.txt", "[P0]\nA\n")), LoadResult::FAULTY);
    EXPECT_EQ(system_message_of(m), "SYSTEM 20:2 LINE");
    expect_empty();
    EXPECT_EQ(load_listing(m, file("\xE3\x81\x82 b.txt", "[P1]\n")), LoadResult::LOADED);
    EXPECT_EQ(load_listing(m, file("empty.txt", "")), LoadResult::FAULTY);
    EXPECT_EQ(system_message_of(m), "SYSTEM 3");
}

TEST_F(ListingFile, ThatCannotBeReadChangesNothing) {
    const std::string plain = file("plain.txt", "[P1]\n10 A\n");
    ASSERT_TRUE(machine.load("[P0]\n10 DATA 1\n"));
    m.run_state = STATE_RUN;
    m.random_seed = 99;
    m.data_pos = 1;
    const std::string unreadable[] = {
        folder.string(), (folder / "missing").string(), plain + "/below", "", "/proc/self/mem", std::string(5000, 'x'),
    };
    for (const std::string& path : unreadable) {
        EXPECT_EQ(load_listing(m, path), LoadResult::UNREADABLE) << path;
        EXPECT_TRUE(system_message_of(m).starts_with("SYSTEM 2:[" + path.substr(0, 1000))) << system_message_of(m);
    }
    const std::string huge = file("huge.txt", "[P0]\n");
    std::filesystem::resize_file(huge, LISTING_SIZE_MAX + 1);
    for (const std::string& path : {huge, std::string("/dev/zero")}) {
        EXPECT_EQ(load_listing(m, path), LoadResult::UNREADABLE) << path;
        EXPECT_EQ(system_message_of(m), "SYSTEM 1") << path;
    }
    EXPECT_EQ(outline(m), "P0 10");
    EXPECT_EQ(m.run_state, STATE_RUN);
    EXPECT_EQ(m.random_seed, 99U);
    EXPECT_EQ(m.data_pos, 1);
    EXPECT_EQ(m.error_code, ERROR_NONE);
    std::filesystem::resize_file(huge, LISTING_SIZE_MAX);
    EXPECT_EQ(load_listing(m, huge), LoadResult::LOADED);
}

TEST_F(ListingFile, MayBeAPipe) {
    const std::string path = (folder / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const auto load_from = [&](const std::string& text) {
        std::thread writer([&] {
            std::ofstream pipe(path, std::ios::binary);
            for (std::size_t at = 0; at < text.size() && pipe; at += 1000)
                pipe << text.substr(at, 1000) << std::flush;
        });
        const LoadResult result = load_listing(m, path);
        writer.join();
        return result;
    };
    EXPECT_EQ(load_from("[P0]\n10 A\n#" + std::string(300000, '.') + "\n20 B"), LoadResult::LOADED);
    EXPECT_EQ(outline(m), "P0 10,20");
    std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(load_from(std::string(LISTING_SIZE_MAX + 70000, '#')), LoadResult::UNREADABLE);
    EXPECT_EQ(system_message_of(m), "SYSTEM 1");
    EXPECT_EQ(outline(m), "P0 10,20");
}

} // namespace
} // namespace quillon::testing
