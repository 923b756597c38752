// SPDX-License-Identifier: MIT
// What the machine shows for a value.
#include "core/number_format.h"

#include "core/charset.h"
#include "core/variables.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

namespace quillon::testing {
namespace {

/// A shown number as the tables have it.
std::string readable(std::string_view text) {
    std::string out(text.starts_with(' ') ? "_" : "");
    for (const char c : text.substr(out.size()))
        out += as_byte(c) == CHAR_EXPONENT ? "E" : as_byte(c) == CHAR_NEGATIVE_EXPONENT ? "E-" : std::string(1, c);
    return out;
}

class NumberFormat : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    void SetUp() override { m.run.run_state = STATE_RUN; }

    /// What PRINT shows for the operand of the machine.
    std::string shown() {
        NumberText text;
        const bool any = format_number(m, text);
        if (failed(m))
            return failure_of(m);
        return any ? readable(text) : "nothing";
    }

    std::string shown(double x, int e_digits = -1, int f_digits = -1) {
        m.settings.set_e_digits = e_digits;
        m.settings.set_f_digits = f_digits;
        m.eval.value.kind = VALUE_NUMBER;
        m.eval.value.number = x;
        m.eval.value.cell = NO_CELL;
        return shown();
    }

    /// "E4 F2 123.456": the digits that are in force, and the number.
    std::string shown_with_settings(std::string_view text) {
        int digits[] = {-1, -1};
        for (; text[0] == 'E' || text[0] == 'F'; text.remove_prefix(text.find(' ') + 1))
            digits[text[0] - 'E'] = std::atoi(text.data() + 1);
        return shown(std::strtod(text.data(), nullptr), digits[0], digits[1]);
    }

    std::string shown_expression(std::string_view expression) {
        m.settings.set_e_digits = m.settings.set_f_digits = -1;
        outcome_of(m, expression);
        return shown();
    }
};

TEST_F(NumberFormat, KnownCases) {
    store_number(m.variables[0], 7);
    store_string(m.variables[1], "TEXT");
    expect_cases("core/number_format.txt",
                 {{"a number", [this](const FileCase& row) { return shown_with_settings(row.input); }},
                  {"an expression", [this](const FileCase& row) { return shown_expression(row.input); }}});
    EXPECT_EQ(shown_expression("\" E B\""), "_E B");
    m.eval.value.kind = VALUE_CURSOR;
    EXPECT_EQ(shown(), "nothing");
    m.eval.value.kind = VALUE_NONE;
    EXPECT_EQ(shown(), "nothing");
}

TEST_F(NumberFormat, NoTextIsLongerThanAValueHolds) {
    const double largest = std::numeric_limits<double>::max();
    for (const double x : {1e100, -1e100, largest, -largest, 1.0 / 3, 5e-324, 1e99}) {
        for (const int digits : {0, 1, 9, 60, 98, 99}) {
            for (const std::string& text : {shown(x, digits, -1), shown(x, -1, digits), shown(x, digits, digits)}) {
                EXPECT_LE(text.size(), 127U + 1); // E- counts as two here
                EXPECT_EQ(text[0], x < 0 ? '-' : '_');
            }
        }
    }
    EXPECT_EQ(shown(1e50, -1, 99), "_10000000000000001" + std::string(34, '0') + "." + std::string(74, '0'));
    EXPECT_EQ(shown(1.0 / 3, 99, -1), "_3.3333333333333331" + std::string(82, '0') + "E-01");
}

TEST_F(NumberFormat, CommandModeHasNoSignBlank) {
    m.run.run_state = STATE_COMMAND;
    EXPECT_EQ(shown(123.456), "123.456");
    EXPECT_EQ(shown(-1.5), "-1.5");
    EXPECT_EQ(shown(2, -1, 1), "2.0");
}

} // namespace
} // namespace quillon::testing
