// The DATA index of a listing.
#include "core/data_index.h"

#include "core/listing.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// "P0 10: 'A' 'B' P1": areas, lines and items in the order of the index.
std::string index_of(const Machine& m) {
    std::string text;
    for (const DataItem& item : m.data_index) {
        if (item.kind == DataItem::END)
            break;
        text += text.empty() ? "" : " ";
        switch (item.kind) {
        case DataItem::AREA: text += "P" + std::to_string(item.arg); break;
        case DataItem::LINE: text += std::to_string(item.arg) + ":"; break;
        default: text += "'" + std::string(item.text.view()) + "'";
        }
    }
    return text;
}

class DataIndex : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    std::string outcome(std::string_view listing) { return machine.load(listing) ? index_of(m) : system_message_of(m); }

    /// Of line 10 in P0, with and without a line feed behind it.
    std::string outcome_of_line(const std::string& line) {
        const std::string index = outcome("[P0]\n10 " + line + "\n");
        EXPECT_EQ(outcome("[P0]\n10 " + line), index) << line;
        return index;
    }
};

TEST_F(DataIndex, ItemsOfLines) {
    expect_cases("core/data_index.txt", [this](const FileCase& row) { return outcome_of_line(row.input); });
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
        EXPECT_EQ(outcome_of_line(line), "P0 10: " + items) << line;
    EXPECT_EQ(outcome("[P7]\n10 DATA A\n20 DATA B\n[P2]\n5 DATA C\n[P4]\n[P0]\n1 PRINT\n"),
              "P0 P2 5: 'C' P4 P7 10: 'A' 20: 'B'");
}

TEST_F(DataIndex, RunsNothing) {
    EXPECT_EQ(outcome("[P0]\n10 A(B=5)=1:A(1/0)=2:Z(999)=1:C$(FOO)=1\n20 A(PRINT 1):DATA 1\n"), "P0 20: '1'");
    for (const Variable& cell : m.variables)
        EXPECT_EQ(cell.kind, -1);
    EXPECT_EQ(m.error_detail.view(), "");
    EXPECT_EQ(m.error_code, ERROR_NONE);
}

TEST_F(DataIndex, HoldsFiveHundredAndTwelveEntries) {
    std::string items; // with the area and the line two entries more; the end needs one
    for (int i = 0; i < 508; ++i)
        items += "x,";
    EXPECT_TRUE(machine.load("[P0]\n1 DATA " + items + "y\n"));
    EXPECT_EQ(m.data_index[510].text.view(), "y");
    EXPECT_EQ(m.data_index[511].kind, DataItem::END);
    const std::string lines = "[P0]\n1 DATA " + items + "\n";
    for (const char* more : {"2 DATA x\n", "2 DATA x\n3 DATA y\n", "[P1]\n1 DATA x,y,z\n[P2]\n"}) {
        EXPECT_FALSE(machine.load(lines + more)) << more;
        EXPECT_EQ(system_message_of(m).substr(0, 18), "SYSTEM 70(MAX:512)") << more;
        EXPECT_EQ(index_of(m), "") << more;
    }
}

TEST_F(DataIndex, FindsTheDataOfAnArea) {
    machine.load("[P1]\n10 DATA A\n[P3]\n20 DATA B,C\n");
    const std::pair<int, int> rows[] = {{1, 1}, {3, 4}, {0, 0}, {9, 0}};
    for (const auto& [area, first] : rows) {
        m.cur_area = area;
        m.data_pos = 77;
        restore_area_data(m);
        EXPECT_EQ(m.data_pos, first) << area;
        EXPECT_EQ(m.error_code, ERROR_NONE);
    }
    EXPECT_EQ(system_message_of(m).substr(0, 9), "SYSTEM 72");
}

} // namespace
} // namespace quillon::testing
