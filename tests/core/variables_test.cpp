// Cells, subscripts, and what a cell keeps of a string.
#include "core/variables.h"

#include "core/interpreter.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

class Variables : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    /// The display name of the cell that a variable means, or the failure.
    std::string name_of(std::string_view variable) {
        const std::string outcome = outcome_of(m, variable);
        return m.error_code == ERROR_NONE ? std::string(m.value.variable->name.view()) : outcome;
    }
};

TEST_F(Variables, CellsHaveTheirNamesAndHoldNothing) {
    store_number(m.variables[3], 5);
    store_string(dollar_var(m), "X");
    init_variables(m);
    for (int i = 0; i < CELL_COUNT; ++i) {
        const Variable& cell = m.variables[static_cast<std::size_t>(i)];
        EXPECT_EQ(cell.name.view(), i < 26 ? std::string(1, static_cast<char>('A' + i)) : std::to_string(i - 25));
        EXPECT_TRUE(cell.kind == -1 && cell.text.empty() && cell.number == 0) << i;
    }
    EXPECT_EQ(&dollar_var(m), &m.variables[222]);
}

TEST_F(Variables, SubscriptsNameCells) {
    store_number(m.variables[13], 25); // N
    const char* const rows = R"(
        A      A     A$     B(-1)    A(-0.9)     A(N-N)    A(
        B      B     B(0)   A(1)     A(1.9)      A(0.9999999)   A(1<2)   A(1   a$x(1)   A$(1)
        C      A(INT 2.5)   A(1+1)
        Z      z     A(25)  A(N)     A(A(13))
        1      A(26)        B(25)  Z(1)     Z$(1)       A(N+1)
        196    A(221)       Z(196)
        197    $
        ERR6 SYSTEM 40 =A(222)(MAX:222)           A(222)    1+A(222)     A(A(222))
        ERR6 SYSTEM 40 =Z(197)(MAX:222)           z(197)
        ERR6 SYSTEM 40 =Z$(197)(MAX:222)          Z$(197)
        ERR6 SYSTEM 40 =A(-1)(MAX:222)            A(-1)
        ERR6 SYSTEM 40 =B$(-2)(MAX:222)           B$(-2)
        ERR6 SYSTEM 40 =Z(2147483647)(MAX:222)    Z(2147483647)          Z(10^90)
        ERR6 SYSTEM 40 =A(-2147483648)(MAX:222)   A(0-10^90)
        ERR2 SYSTEM 4:"foo"                       A(FOO)
        ERR3 SYSTEM 5                             A(1/0)
        ERR2 SYSTEM 4:0x0029 (TOKEN_ID)           A()
        ERR2 SYSTEM 4:';'                         A(1;2)
    )";
    for (const Case& row : cases(rows))
        EXPECT_EQ(name_of(row.text), row.outcome) << row.text;
}

TEST_F(Variables, OnlyDollarBecomesAStringByBeingRead) {
    outcome_of(m, "A$+A$(5)+$");
    EXPECT_EQ(m.variables[0].kind, -1);
    EXPECT_EQ(m.variables[5].kind, -1);
    EXPECT_EQ(dollar_var(m).kind, 1);
}

} // namespace
} // namespace quillon::testing
