// SPDX-License-Identifier: MIT
// Loading listings: the format, every fault with its line, what a failed load leaves, and the DATA index.
#include "core/program.h"
#include "core/program_text.h"

#include "core/controls.h"
#include "core/data_items.h"
#include "core/fields.h"
#include "core/interpreter.h"
#include "core/variables.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// "P0 10,20 P3 5": the used areas with the numbers of their lines.
std::string outline(const Machine& m) {
    std::string text;
    for (std::size_t n = 0; n < AREA_COUNT; ++n) {
        const ProgramArea& area = m.listing->areas[n];
        if (area.used)
            text += (text.empty() ? "P" : " P") + std::to_string(n);
        for (std::size_t i = 0; i < area.lines.size(); ++i)
            text += (i == 0 ? " " : ",") + std::to_string(area.lines[i].number);
    }
    return text;
}

/// "P0 10: 'A' 'B' P1": areas, lines and items in the order of the index.
std::string index_of(const Machine& m) {
    std::string text;
    for (const DataItem* item = m.listing->data.data(); item->kind != DataItem::END; ++item) {
        const std::string arg = std::to_string(item->arg);
        text += text.empty() ? "" : " ";
        text += item->kind == DataItem::AREA   ? "P" + arg
                : item->kind == DataItem::LINE ? arg + ":"
                                               : "'" + std::string(item->text.view()) + "'";
    }
    return text;
}

/// A listing of the tables: "<CR>" is one.
std::string listing_of(std::string text) {
    for (std::size_t at = 0; (at = text.find("<CR>", at)) != std::string::npos;)
        text.replace(at, 4, "\r");
    return text;
}

std::string area_of(int area, int lines) {
    std::string text = "[P" + std::to_string(area) + "]\n";
    for (int i = 1; i <= lines; ++i)
        text += std::to_string(i) + " A\n";
    return text;
}

class Listing : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    std::string outcome(std::string_view text) { return machine.load(text) ? outline(m) : system_message_of(m); }

    std::string loaded(std::string_view text) {
        const std::string result = outcome(text);
        return m.run.run_state == STATE_SELECT ? result : result + ", and no area can be selected";
    }

    /// The message; and what is left of the listing before.
    std::string refused(std::string_view text) {
        TestMachine fresh;
        fresh.load(text);
        machine.load("[P0]\n10 DATA 1\n[P5]\n10 A\n");
        m.program.for_depth = m.program.gosub_depth = 1;
        m.eval.next = m.entry.saved_next = m.program.stmt_start = 1;
        const std::string message = outcome(text);
        EXPECT_TRUE(m.listing->text.empty());
        EXPECT_EQ(m.run.run_state, STATE_SELECT);
        EXPECT_EQ(m.listing->data[0].kind, DataItem::END);
        return message + outline(m) + record_difference(m, fresh.m);
    }

    std::string data_of(std::string_view text) { return machine.load(text) ? index_of(m) : system_message_of(m); }

    /// Of line 10 in P0, with and without a line feed behind it.
    std::string data_of_line(const std::string& line) {
        const std::string index = data_of("[P0]\n10 " + line + "\n");
        EXPECT_EQ(data_of("[P0]\n10 " + line), index) << line;
        return index;
    }
};

TEST_F(Listing, Format) {
    expect_cases("core/listing.txt",
                 {{"is loaded", [this](const FileCase& row) { return loaded(listing_of(row.input)); }},
                  {"is refused", [this](const FileCase& row) { return refused(listing_of(row.input)); }}});
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
    EXPECT_EQ(refused(""), "SYSTEM 3");
    EXPECT_EQ(refused("\032[P0]\n"), "SYSTEM 3");
    EXPECT_EQ(refused({"\177ELF\0\1\2", 7}), "SYSTEM 23:1 LINE");
    EXPECT_EQ(refused("\xEF\xBB[P0]\n"), "SYSTEM 23:1 LINE");
    EXPECT_EQ(refused("\n\xEF\xBB\xBF[P0]\n"), "SYSTEM 23:2 LINE");
}

TEST_F(Listing, LinesAreTheTextBehindTheirNumber) {
    ASSERT_TRUE(machine.load("[P0]\r\n10 A=1\r\n20\tB:C\n30  \n40 D"));
    const auto& lines = m.listing->areas[0].lines;
    EXPECT_STREQ(source_at(m, lines[0].text), " A=1\r");
    EXPECT_STREQ(source_at(m, lines[1].text), "\tB:C");
    EXPECT_STREQ(source_at(m, lines[3].text), " D");
    m.run.run_state = STATE_RUN;
    EXPECT_EQ(select_area(m, 0), lines[0].tokens);
    EXPECT_EQ(select_area(m, 5), NOWHERE);
    EXPECT_EQ(failure_of(m), "ERR5 SYSTEM 24[Page:5]");
}

TEST_F(Listing, LinesAreFoundAgainAmongMany) {
    std::string text = "[P0]\n";
    for (int line = 0; line < LINES_PER_AREA; ++line)
        text += std::to_string(32 * line) + " A=1\n";
    ASSERT_TRUE(machine.load(text));
    for (int round = 0; round < 2; ++round) {
        for (int line = 0; line < LINES_PER_AREA; ++line) {
            EXPECT_EQ(find_line(*m.listing, m.program.cur_area, 32 * line), line);
            EXPECT_EQ(find_line(*m.listing, m.program.cur_area, 32 * line), line);
            EXPECT_EQ(find_line(*m.listing, m.program.cur_area, 32 * line + 64 * LINES_PER_AREA), -1);
        }
    }
}

TEST_F(Listing, Limits) {
    std::string full;
    for (int area = 0; area < AREA_COUNT; ++area)
        full += area_of(area, LINES_PER_AREA);
    ASSERT_TRUE(machine.load(full));
    for (const ProgramArea& area : m.listing->areas)
        EXPECT_EQ(area.lines.size(), std::size_t{LINES_PER_AREA});
    EXPECT_EQ(outcome(area_of(0, LINES_PER_AREA + 1)), "SYSTEM 70(MAX:512)");
}

TEST_F(Listing, ALoadKeepsVariablesAndSettings) {
    store_number(m.variables[0], 5);
    m.settings.run_page = 3;
    m.screen.print_mode = true;
    m.run.run_state = STATE_COMMAND;
    machine.simulator->around.host.milliseconds = [] { return 4711U; };
    ASSERT_TRUE(machine.load("[P0]\n10 A\n"));
    EXPECT_EQ(m.variables[0].number, 5);
    EXPECT_EQ(m.settings.run_page, 3);
    EXPECT_FALSE(m.screen.print_mode);
    EXPECT_EQ(m.run.run_state, STATE_SELECT);
    EXPECT_EQ(m.random_seed, 4711U);
}

TEST_F(Listing, HasItsDataItems) {
    expect_cases("core/data_index.txt", [this](const FileCase& row) { return data_of_line(row.input); });
    const std::string longest(63, 'x');
    const std::pair<std::string, std::string> others[] = {
        {"DATA   AB  , \tC D\t ", "'AB' 'C D'"},
        {"DATA \"  AB  \"  ,  \"C,D\"  ", "'  AB  ' 'C,D'"},
        {"DATA A\r", "'A'"},
        {"DATA A,\"B\r", "'A' 'B'"},
        {R"(DATA \pi,"\PI",\\)", "'\207' '\207' '\\'"},
        {"DATA " + longest + ",y", "'" + longest + "' 'y'"},
        {"DATA " + longest + "x,y", "'" + longest + "' 'y'"},
        {"DATA \"" + longest + longest + "\",y", "'" + longest + "' 'y'"},
        {"DATA x" + std::string(80, ' ') + ",y", "'x' 'y'"},
    };
    for (const auto& [line, items] : others)
        EXPECT_EQ(data_of_line(line), "P0 10: " + items) << line;
    EXPECT_EQ(data_of("[P7]\n10 DATA A\n20 DATA B\n[P2]\n5 DATA C\n[P4]\n[P0]\n1 PRINT\n"),
              "P0 P2 5: 'C' P4 P7 10: 'A' 20: 'B'");
    m.program.cur_area = 9;
    m.program.data_pos = 77;
    restore_area_data(m);
    EXPECT_EQ(m.program.data_pos, 0) << "an area that the listing does not know reads from the start";
    EXPECT_EQ(system_message_of(m).substr(0, 9), "SYSTEM 72");
}

TEST_F(Listing, RunsNothingForItsDataItems) {
    EXPECT_EQ(data_of("[P0]\n10 A(B=5)=1:A(1/0)=2:Z(999)=1:C$(FOO)=1\n20 A(PRINT 1):DATA 1\n"), "P0 20: '1'");
    for (const Variable& cell : m.variables)
        EXPECT_EQ(cell.kind, CELL_UNASSIGNED);
    EXPECT_EQ(m.error.error_detail.view(), "");
    EXPECT_EQ(m.error.error_code, ERROR_NONE);
}

TEST_F(Listing, HasFiveHundredAndTwelveEntriesOfDataAtMost) {
    std::string items; // with the area and the line two entries more; the end needs one
    for (int i = 0; i < 508; ++i)
        items += "x,";
    EXPECT_TRUE(machine.load("[P0]\n1 DATA " + items + "y\n"));
    EXPECT_EQ(m.listing->data[510].text.view(), "y");
    EXPECT_EQ(m.listing->data[511].kind, DataItem::END);
    const std::string lines = "[P0]\n1 DATA " + items + "\n";
    for (const char* more : {"2 DATA x\n", "2 DATA x\n3 DATA y\n", "[P1]\n1 DATA x,y,z\n[P2]\n"}) {
        EXPECT_FALSE(machine.load(lines + more)) << more;
        EXPECT_EQ(system_message_of(m).substr(0, 18), "SYSTEM 70(MAX:512)") << more;
        EXPECT_EQ(index_of(m), "") << more;
    }
}

} // namespace
} // namespace quillon::testing
