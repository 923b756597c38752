// Cells, and subscripts. What a cell keeps of a string: executor.txt.
#include "core/variables.h"

#include "core/interpreter.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

TEST(Variables, CellsHaveTheirNamesAndHoldNothing) {
    TestMachine machine;
    Machine& m = machine.m;
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

TEST(Variables, SubscriptsNameCells) {
    TestMachine machine;
    Machine& m = machine.m;
    store_number(m.variables[13], 25);
    expect_cases("core/variables.txt", [&m](const FileCase& row) {
        const std::string outcome = outcome_of(m, row.input);
        return m.error_code == ERROR_NONE ? std::string(m.value.variable->name.view()) : outcome;
    });
}

} // namespace
} // namespace quillon::testing
