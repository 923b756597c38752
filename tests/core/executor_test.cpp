// Assignments, and how a statement ends.
#include "core/interpreter.h"

#include "core/variables.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

class Executor : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;
    decltype(m.variables) before{};

    void SetUp() override { set_cells(); }

    /// N is 9, S is TEXT, the others were never assigned.
    void set_cells() {
        clear_variables(m);
        store_number(m.variables[13], 9);
        store_string(m.variables[18], "TEXT");
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
            text += ", " + (&now == &dollar_var(m) ? "$" : std::string(now.name.view())) + " ";
            text += now.kind == 1 ? "'" + std::string(now.text.view()) + "'" : number;
            EXPECT_TRUE(now.kind == 1 ? now.number == 0 : now.text.empty()) << text;
        }
        return text;
    }
};

TEST_F(Executor, AssignsOrRefuses) {
    expect_cases("core/executor.txt", [this](const FileCase& row) {
        set_cells();
        std::string outcome = outcome_of(m, row.input);
        outcome += changes();
        const bool whole = m.error_code != ERROR_NONE || (m.value.complete == 1 && m.operand_done == 0);
        return whole ? outcome : outcome + ", and an operand is left";
    });
}

TEST_F(Executor, WordsWithoutEffect) {
    for (const char* word :
         {"LIST", "CLEAR", "DEFM", "SAVE", "LOAD", "PUT", "GET", "VER", "VERIFY", "PASS", "DATA", "REM"}) {
        for (const char* rest : {"", " 5", " \"A:B\"", " 1,,;FOO)1.2.3", " A(5,\"\\zz"}) {
            EXPECT_EQ(outcome_of(m, word + std::string(rest)), "0") << word << rest;
            EXPECT_EQ(m.token, TOKEN_END) << word << rest;
            EXPECT_EQ(m.error_detail.view(), "") << word << rest;
        }
        outcome_of(m, word + std::string(" A(B=1):A=1"));
        EXPECT_EQ(m.token, std::string_view(word) == "REM" ? TOKEN_END : TOKEN_COLON) << word;
    }
    EXPECT_EQ(changes(), "") << "a skipped statement evaluates nothing";
}

TEST_F(Executor, CommandModeDropsAnUnknownTokenBehindAnExpression) {
    for (const char* text : {"5 5", "A=5 MOD", "5 FOO", "5 A"}) {
        m.run_state = STATE_COMMAND;
        EXPECT_EQ(outcome_of(m, text), "5") << text;
        EXPECT_EQ(m.token, 0) << text;
    }
    EXPECT_EQ(outcome_of(m, "5;"), "ERR2 SYSTEM 4:';'");
    m.run_state = STATE_COMMAND;
    EXPECT_EQ(outcome_of(m, "MOD"), "ERR2 SYSTEM 4:0x000e (TOKEN_ID)");
}

} // namespace
} // namespace quillon::testing
