// Expressions: precedence, operand kinds, strings, the range of factors, nesting, and the errors of all levels.
#include "core/interpreter.h"

#include "core/variables.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// With the cells that evaluator.txt tells.
class Evaluator : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    void SetUp() override {
        store_number(m.variables[1], 2);
        store_number(m.variables[2], -3);
        store_string(m.variables[23], "TEXT");
        store_number(m.variables[24], 1e200);
        store_string(dollar_var(m), "DOLLAR");
    }

    /// What a row of the file gives in the statement context `kind`.
    OutcomeOfCase in_context(int kind) {
        return [this, kind](const FileCase& row) {
            const std::string outcome = outcome_of(m, row.input, kind);
            return m.nesting_depth == 0 ? outcome : outcome + " and it is still nested";
        };
    }

    std::string operand_record(std::string_view expression) {
        outcome_of(m, expression);
        char record[64];
        std::snprintf(record, sizeof record, "%d %g %d", static_cast<int>(m.value.kind), m.value.number,
                      m.value.complete);
        return m.operand_done == 1 ? record : "none";
    }
};

TEST_F(Evaluator, GivesNumbersStringsAndErrors) {
    expect_cases("core/evaluator.txt",
                 {{"a statement", in_context(KIND_NONE)},
                  {"a statement of GOTO", in_context(KIND_JUMP)},
                  {"a statement of PRINT", in_context(KIND_PRINT)},
                  {"a condition", in_context(KIND_CONDITION)},
                  {"what the operand record tells behind it: kind, number, whether it was computed",
                   [this](const FileCase& row) { return operand_record(row.input); }}});
}

TEST_F(Evaluator, SpecialCharactersAndLongTexts) {
    const std::string text(100, 'x');
    EXPECT_EQ(outcome_of(m, "\"" + text + "\"+\"" + text + "\""), "'" + std::string(127, 'x') + "'");
    EXPECT_EQ(outcome_of(m, "&H" + std::string(300, 'F')).substr(0, 13), "ERR3 SYSTEM 6");
    EXPECT_EQ(outcome_of(m, "1\2153"), "1000") << "EX as a character";
    EXPECT_EQ(outcome_of(m, "5\2342"), "0.05") << "EM as a character";
    EXPECT_EQ(outcome_of(m, "\207*2"), "6.283185307");
    EXPECT_EQ(outcome_of(m, ""), "0");
    EXPECT_EQ(outcome_of(m, "5\240"), "ERR2 SYSTEM 4:0x00a0 (TOKEN_ID)");
    for (int byte = 1; byte < 32; ++byte) {
        const bool is_read = byte == '\t' || byte == '\n' || byte == '\r' || byte == 27;
        const char* const expected = is_read ? "0" : "ERR2 SYSTEM 4:0x0000 (TOKEN_ID)";
        EXPECT_EQ(outcome_of(m, std::string(1, static_cast<char>(byte))), expected) << byte;
    }
}

TEST_F(Evaluator, OpenParenthesesEndWithTheirStatement) {
    EXPECT_EQ(shown_by("A=1:IF (A THEN 30\nEND\nFOR I=(A TO 3:NEXT I:PRINT I"), " 4");
}

TEST_F(Evaluator, OnlyAnExpressionLeavesAnOperand) {
    for (const char* statement : {"E=1", "1<2", "PASS", "PRINT 1"}) {
        m.operand_done = 1;
        outcome_of(m, statement);
        EXPECT_EQ(m.operand_done, 0) << statement;
    }
}

std::string repeated(std::string_view part, int count) {
    std::string text;
    while (count-- > 0)
        text += part;
    return text;
}

TEST_F(Evaluator, NestsDeeplyButNotWithoutBound) {
    const std::pair<const char*, const char*> nests[] = {{"(", ")"},  {"(", ""},    {"-", ""},
                                                         {"+", ""},   {"ABS ", ""}, {"INT(", ")"},
                                                         {"D(", ")"}, {"(-", ")"},  {"1^(", ")"}};
    for (const auto& [open, close] : nests) {
        for (const int depth : {32, 256, 30000}) {
            const std::string outcome = outcome_of(m, repeated(open, depth) + "1" + repeated(close, depth));
            const std::string expected = depth > 32 ? "ERR2 SYSTEM 4:0x" : open[0] == 'D' ? "0" : "1";
            EXPECT_EQ(outcome.substr(0, expected.size()), expected) << open;
            EXPECT_EQ(m.nesting_depth, 0) << open;
        }
    }
    for (int i = 0; i < 200; ++i)
        outcome_of(m, "((((((FOO");
    EXPECT_EQ(outcome_of(m, repeated("(", 32) + "1"), "1") << "after errors the depth is counted afresh";
}

} // namespace
} // namespace quillon::testing
