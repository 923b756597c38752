// SPDX-License-Identifier: MIT
// Statements, expressions and cells: precedence, operand kinds, strings, the range of factors, nesting, assignments,
// how a statement ends, subscripts, and the errors of all levels.
#include "core/interpreter.h"

#include "core/variables.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

class Evaluator : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;
    decltype(m.variables) before{};

    void SetUp() override { set_cells(); }

    /// The cells that the text files tell.
    void set_cells() {
        clear_variables(m);
        const std::pair<char, double> numbers[] = {{'B', 2}, {'C', -3}, {'N', 9}, {'W', 25}, {'Y', 1e200}};
        for (const auto& [letter, number] : numbers)
            store_number(cell_at(m, variable_cell(letter - 'A', 0)), number);
        store_string(cell_at(m, variable_cell('S' - 'A', 0)), "TEXT");
        store_string(cell_at(m, variable_cell('X' - 'A', 0)), "TEXT");
        before = m.variables;
    }

    /// The cells that are not as `set_cells` left them: ", A 5, C 'AB'".
    std::string changes() {
        std::string text;
        for (std::size_t i = 0; i < m.variables.size(); ++i) {
            const Variable& now = m.variables[i];
            if (now.kind == before[i].kind && now.number == before[i].number &&
                now.text.view() == before[i].text.view())
                continue;
            char number[32];
            std::snprintf(number, sizeof number, "%.10g", now.number);
            text += ", " + (&now == &dollar_var(m) ? "$" : std::string(cell_name(static_cast<int>(i)).view())) + " ";
            text += now.kind == CELL_STRING ? "'" + std::string(now.text.view()) + "'" : number;
            EXPECT_TRUE(now.kind == CELL_STRING ? now.number == 0 : now.text.empty()) << text;
        }
        return text;
    }

    /// What a row of the file gives in the statement context `kind`.
    OutcomeOfCase in_context(StmtKind kind) {
        return [this, kind](const FileCase& row) {
            const std::string outcome = outcome_of(m, row.input, kind);
            return m.eval.nesting_depth == 0 ? outcome : outcome + " and it is still nested";
        };
    }

    std::string operand_record(std::string_view expression) {
        outcome_of(m, expression);
        char record[64];
        std::snprintf(record, sizeof record, "%d %g %d", static_cast<int>(m.eval.value.kind), m.eval.value.number,
                      m.eval.value.complete);
        return m.eval.operand_done ? record : "none";
    }

    std::string assignment(std::string_view statement) {
        set_cells();
        std::string outcome = outcome_of(m, statement);
        outcome += changes();
        const bool whole = failed(m) || (m.eval.value.complete && !m.eval.operand_done);
        return whole ? outcome : outcome + ", and an operand is left";
    }
};

TEST_F(Evaluator, GivesNumbersStringsAndErrors) {
    store_string(dollar_var(m), "DOLLAR");
    expect_cases("core/evaluator.txt",
                 {{"a statement", in_context(KIND_NONE)},
                  {"a statement of GOTO", in_context(KIND_JUMP)},
                  {"a statement of PRINT", in_context(KIND_PRINT)},
                  {"a condition", in_context(KIND_CONDITION)},
                  {"the operand record behind it", [this](const FileCase& row) { return operand_record(row.input); }}});
}

TEST_F(Evaluator, AssignsOrRefuses) {
    expect_cases("core/executor.txt", [this](const FileCase& row) { return assignment(row.input); });
}

TEST_F(Evaluator, SubscriptsNameCells) {
    expect_cases("core/variables.txt", [this](const FileCase& row) {
        const std::string outcome = outcome_of(m, row.input);
        return !failed(m) ? std::string(cell_name(m.eval.value.cell).view()) : outcome;
    });
}

TEST_F(Evaluator, CellsHaveTheirNamesAndHoldNothing) {
    clear_variables(m);
    for (int i = 0; i < CELL_COUNT; ++i) {
        const Variable& cell = m.variables[static_cast<std::size_t>(i)];
        EXPECT_EQ(cell_name(i).view(), i < 26 ? std::string(1, static_cast<char>('A' + i)) : std::to_string(i - 25));
        EXPECT_TRUE(cell.kind == CELL_UNASSIGNED && cell.text.empty() && cell.number == 0) << i;
    }
    EXPECT_EQ(&dollar_var(m), &m.variables[222]);
}

TEST_F(Evaluator, WordsWithoutEffect) {
    for (const char* word :
         {"LIST", "CLEAR", "DEFM", "SAVE", "LOAD", "PUT", "GET", "VER", "VERIFY", "PASS", "DATA", "REM"}) {
        for (const char* rest : {"", " 5", " \"A:B\"", " 1,,;FOO)1.2.3", " A(5,\"\\zz"}) {
            EXPECT_EQ(outcome_of(m, word + std::string(rest)), "0") << word << rest;
            EXPECT_EQ(m.eval.token, TOKEN_END) << word << rest;
            EXPECT_EQ(m.error.error_detail.view(), "") << word << rest;
        }
        outcome_of(m, word + std::string(" A(B=1):A=1"));
        EXPECT_EQ(m.eval.token, std::string_view(word) == "REM" ? TOKEN_END : TOKEN_COLON) << word;
    }
    EXPECT_EQ(changes(), "") << "a skipped statement evaluates nothing";
}

TEST_F(Evaluator, CommandModeDropsAnUnknownTokenBehindAnExpression) {
    for (const char* text : {"5 5", "A=5 MOD", "5 FOO", "5 A"}) {
        m.run.run_state = STATE_COMMAND;
        EXPECT_EQ(outcome_of(m, text), "5") << text;
        EXPECT_EQ(m.eval.token, TOKEN_UNKNOWN) << text;
    }
    EXPECT_EQ(outcome_of(m, "5;"), "ERR2 SYSTEM 4:';'");
    m.run.run_state = STATE_COMMAND;
    EXPECT_EQ(outcome_of(m, "MOD"), "ERR2 SYSTEM 4:0x000e (TOKEN_ID)");
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

TEST_F(Evaluator, OnlyAnExpressionLeavesAnOperand) {
    for (const char* statement : {"E=1", "1<2", "PASS", "PRINT 1"}) {
        m.eval.operand_done = true;
        outcome_of(m, statement);
        EXPECT_FALSE(m.eval.operand_done) << statement;
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
            EXPECT_EQ(m.eval.nesting_depth, 0) << open;
        }
    }
    for (int i = 0; i < 200; ++i)
        outcome_of(m, "((((((FOO");
    EXPECT_EQ(outcome_of(m, repeated("(", 32) + "1"), "1") << "after errors the depth is counted afresh";
}

} // namespace
} // namespace quillon::testing
