// Expressions: precedence, types, strings, and every error of the operator levels.
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

struct Row {
    const char* expression;
    const char* value;
};

class Expressions : public ::testing::TestWithParam<Row> {};

TEST_P(Expressions, GiveTheirValue) {
    EXPECT_EQ(value_of(GetParam().expression), GetParam().value) << GetParam().expression;
}

INSTANTIATE_TEST_SUITE_P(Precedence, Expressions,
                         ::testing::Values(Row{"2+3*4", "14"}, Row{"(2+3)*4", "20"}, Row{"2^3^2", "64"},
                                           Row{"-2^2", "4"}, Row{"2^-1", "0.5"}, Row{"8/2/2", "2"}, Row{"1EX3", "1000"},
                                           Row{"1 EX 3", "1000"}, Row{"5 EM 2", "0.05"}, Row{"(2+3", "5"}));

} // namespace
} // namespace quillon::testing
