// What the machine shows for a value. In the tables E stands for the exponent mark, E- for the mark with its sign, and
// _ for the blank in the place of the sign.
#include "core/number_format.h"

#include "core/charset.h"
#include "core/variables.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

namespace quillon::testing {
namespace {

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

    /// What PRINT shows.
    std::string shown(double x, int e_digits = -1, int f_digits = -1) {
        m.set_e_digits = e_digits;
        m.set_f_digits = f_digits;
        m.value.kind = VALUE_NUMBER;
        m.value.number = x;
        m.value.variable = nullptr;
        NumberText text;
        return format_number(m, text) ? readable(text) : "nothing";
    }

    void SetUp() override { m.run_state = STATE_RUN; }
};

TEST_F(NumberFormat, Automatic) {
    const char* const rows = R"(
        0                   _0              -0                  _0              1e-15              _1E-15
        1                   _1              -1                  -1              0.5                _0.5
        123.456             _123.456        -123.456            -123.456        12345.678901234    _12345.6789
        1234567890          _1234567890     9999999999          _9999999999     9999999999.5       _1E10
        1e10                _1E10           1.5e10              _1.5E10         99999999999        _1.0000000E11
        12345678901         _1.2345679E10   -12345678901        -1.234568E10    12345678900        _1.2345679E10
        12345670000         _1.234567E10    -12345670000        -1.234567E10    5.0001             _5.0001
        0.01                _0.01           0.001               _0.001          0.00099            _9.9E-04
        0.0001              _1E-04          0.00012345          _1.2345E-04     -0.00012345        -1.2345E-04
        1.2e-7              _1.2000000E-07  -1.2e-7             -1.200000E-07   10.005             _10.005
        30.000000000000004  _30             0.333333333333333   _0.3333333333   0.666666666666666  _0.6666666667
        1e-99               _1E-99          1.5e-20             _1.5E-20        1.23456789012e-20  _1.23456789E-20
        1e18                _1E18           1.5e18              _1.5E18         2e18               _2E18
        9.2e18              _9.2E18         1e19                _1E19           1e23               _1E23
        12345678901234567890  _1.23456789E19  3.14159265358979  _3.141592654    1e20               _1E20
        1e100               _1E100          -2.5e123            -2.5E123        9.9999999999e99    _1E100
        1e-100              _1E-100         9.999999999e99      _9.999999999E99  5e-324            _4.940656458E-324
    )";
    for (const TableRow& row : table(rows)) {
        for (std::size_t i = 0; i < row.size(); i += 2)
            EXPECT_EQ(shown(std::strtod(row[i].c_str(), nullptr)), row[i + 1]) << row[i];
    }
}

TEST_F(NumberFormat, WithSettings) {
    // SET E and SET F (-1: not in force), a number, and what is shown.
    const char* const rows = R"(
        4   -1   123.456    _1.235E02
        1   -1   123.456    _1E02
        0   -1   0.6666666666666666    _6.6666667E-01
        3   -1   -0.000123  -1.23E-04
        8   -1   0          _0.0000000E00
        2   -1   -0         _0.0E00
        2   -1   9.96       _1.0E01
        3   -1   1e100      _1.00E100
        3   -1   9.999e99   _1.00E100
        18  -1   0.6666666666666666    _6.66666666666666630E-01
        20  -1   0.6666666666666666    _6.6666666666666663000E-01
        -1  2    123.456    _123.46
        -1  2    -2.5       -2.50
        -1  2    0.125      _0.13
        -1  0    2.5        _3
        -1  0    -0.5       -1
        -1  0    0.25       _0
        -1  1    1.45       _1.5
        -1  3    1e-7       _0.000
        -1  2    -0.001     -0.00
        -1  2    -0         _0.00
        -1  2    1e12       _1000000000000.00
        -1  1    1e23       _99999999999999992000000.0
        5   2    123.456    _123.46
        30  2    123.456    _123.46
        0   0    123.456    _123
        1   9    0.1        _0.100000000
    )";
    for (const TableRow& row : table(rows))
        EXPECT_EQ(shown(std::strtod(row[2].c_str(), nullptr), std::stoi(row[0]), std::stoi(row[1])), row[3]) << row[2];
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
    m.run_state = STATE_COMMAND;
    EXPECT_EQ(shown(123.456), "123.456");
    EXPECT_EQ(shown(-1.5), "-1.5");
    EXPECT_EQ(shown(2, -1, 1), "2.0");
}

TEST_F(NumberFormat, EachKindOfOperand) {
    store_number(m.variables[0], 7);
    store_string(m.variables[1], "TEXT");
    const char* const rows = R"(
        _7             A     (A)    3+4
        -7             -A
        _8             A+1
        _0             C
        TEXT           B$
        AB             "AB"
        _E B           " E B"
        nothing        A$    C$     E$(9)
        ERR6 PRINT 0   B     (B)
    )";
    for (const Case& row : cases(rows)) {
        outcome_of(m, row.text);
        NumberText text;
        const bool any = format_number(m, text);
        EXPECT_EQ(m.error_code != ERROR_NONE ? failure_of(m)
                  : any                      ? readable(text)
                                             : "nothing",
                  row.outcome)
            << row.text;
    }
    m.value.kind = VALUE_CURSOR;
    NumberText text;
    EXPECT_FALSE(format_number(m, text));
    m.value.kind = VALUE_NONE;
    EXPECT_FALSE(format_number(m, text));
}

} // namespace
} // namespace quillon::testing
