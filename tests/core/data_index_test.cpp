// The DATA index of a listing.
#include "core/data_index.h"

#include "core/listing.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
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
};

TEST_F(DataIndex, ItemsOfALine) {
    std::vector<Case> lines = cases(R"(
        P0                          REM DATA 1        REM:DATA 1          A$="DATA 1"      A$=":DATA 1     PRINT
        P0 10:                      DATA              data :
        P0 10: '1'                  DATA 1            DATA 1,             DATA 1,:A=1      PRINT A DATA 1
        P0 10: '1'                  A(9=:DATA 1       FOO 1.2.3 "\zz" &Z:DATA 1            RESTORE:READ A:DATA 1
        P0 10: '1' '2'              DATA 1,2          data 1 , 2 :A=3     IF A THEN DATA 1,2
        P0 10: '1' 10: '2'          DATA 1:DATA 2     A=1:DATA 1:B=2:DATA 2
        P0 10: 10: '1'              DATA:DATA 1
        P0 10: 'A' '' 'B'           DATA A,,B         DATA "A","","B"     DATA A,"",B
        P0 10: '' 'A'               DATA ,A           DATA "","A"
        P0 10: 'AB' 'C D'           DATA AB , C D     DATA "AB","C D      DATA "AB" , "C D" :A=1
        P0 10: 'A:B'                DATA "A:B":PRINT 3
        P0 10: 'A"B' 'C"D'          DATA A"B,C"D      DATA A\"B,"C\"D"
        P0 10: '-1.5E3' '&HFF'      DATA -1.5E3,&HFF
        SYSTEM 71                   DATA "A"B         DATA "A" "B"
    )");
    const std::string longest(63, 'x');
    const Case others[] = {
        {"DATA   AB  , \tC D\t ", "P0 10: 'AB' 'C D'"},
        {"DATA \"  AB  \"  ,  \"C,D\"  ", "P0 10: '  AB  ' 'C,D'"},
        {"DATA A\r", "P0 10: 'A'"},
        {"DATA A,\"B\r", "P0 10: 'A' 'B'"},
        {R"(DATA \pi,"\PI",\\)", "P0 10: '\207' '\207' '\\'"},
        {"DATA " + longest + ",y", "P0 10: '" + longest + "' 'y'"},
        {"DATA " + longest + "x,y", "P0 10: '" + longest + "' 'y'"},
        {"DATA \"" + longest + longest + "\",y", "P0 10: '" + longest + "' 'y'"},
        {"DATA x" + std::string(80, ' ') + ",y", "P0 10: 'x' 'y'"},
    };
    lines.insert(lines.end(), std::begin(others), std::end(others));
    EXPECT_EQ(outcome("[P7]\n10 DATA A\n20 DATA B\n[P2]\n5 DATA C\n[P4]\n[P0]\n1 PRINT\n"),
              "P0 P2 5: 'C' P4 P7 10: 'A' 20: 'B'");
    for (const Case& line : lines) {
        EXPECT_EQ(outcome("[P0]\n10 " + line.text + "\n"), line.outcome) << line.text;
        EXPECT_EQ(outcome("[P0]\n10 " + line.text), line.outcome) << line.text << " without a line feed";
    }
}

TEST_F(DataIndex, RunsNothing) {
    EXPECT_EQ(outcome("[P0]\n10 A(B=5)=1:A(1/0)=2:Z(999)=1:C$(FOO)=1\n20 A(PRINT 1):DATA 1\n"), "P0 20: '1'");
    for (const Variable& cell : m.variables)
        EXPECT_EQ(cell.kind, -1);
    EXPECT_EQ(m.error_detail.view(), "");
    EXPECT_EQ(m.error_code, ERROR_NONE);
}

/// A listing whose index has so many entries: the area, and a line with one item on every line.
std::string listing_of(int entries) {
    std::string text = "[P0]\n";
    int lines = 0;
    for (entries -= 1; entries >= 2; entries -= 2)
        text += std::to_string(++lines) + " DATA x\n";
    if (entries == 1)
        text.insert(text.size() - 1, ",y");
    return text;
}

TEST_F(DataIndex, HoldsFiveHundredAndTwelveEntries) {
    const auto entries = [this] {
        int count = 0;
        while (count < DATA_INDEX_SIZE && m.data_index[static_cast<std::size_t>(count)].kind != DataItem::END)
            ++count;
        return count;
    };
    EXPECT_TRUE(machine.load(listing_of(511)));
    EXPECT_EQ(entries(), 511) << "and the end entry is the last";
    for (const int count : {512, 513, 514, 1000}) {
        EXPECT_FALSE(machine.load(listing_of(count))) << count;
        EXPECT_TRUE(system_message_of(m).starts_with("SYSTEM 70(MAX:512)")) << system_message_of(m);
        EXPECT_EQ(entries(), 0);
    }
    std::string items = "[P0]\n1 DATA 0";
    for (int i = 1; i < 509; ++i)
        items += "," + std::to_string(i);
    EXPECT_TRUE(machine.load(items + "\n"));
    EXPECT_EQ(entries(), 511);
    EXPECT_FALSE(machine.load(items + ",x,y\n"));
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
    EXPECT_TRUE(system_message_of(m).starts_with("SYSTEM 72")) << system_message_of(m);
}

} // namespace
} // namespace quillon::testing
