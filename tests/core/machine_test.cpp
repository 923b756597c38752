// What a reset clears and what it keeps.
#include "core/machine.h"

#include "core/variables.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

using Field = int Machine::*;

constexpr Field CLEARED[] = {
    &Machine::error_code,   &Machine::display_cursor,     &Machine::display_offset,    &Machine::for_depth,
    &Machine::gosub_depth,  &Machine::cur_line,           &Machine::cur_area,          &Machine::print_mode,
    &Machine::prev_state,   &Machine::state_after_scroll, &Machine::kind_after_scroll, &Machine::print_clear_pending,
    &Machine::wait_counter, &Machine::program_ended,      &Machine::saved_token,       &Machine::saved_stmt_kind,
};

constexpr Field KEPT[] = {
    &Machine::run_page,     &Machine::angle_unit,   &Machine::data_pos,
    &Machine::set_e_digits, &Machine::set_f_digits, &Machine::set_g_digits,
};

TEST(Machine, AResetLeavesNothingOfARun) {
    TestMachine machine;
    Machine& m = machine.m;
    ASSERT_TRUE(machine.load("[P3]\n10 A\n"));
    store_number(m.variables[4], 5);
    for (const Field field : CLEARED)
        m.*field = 77;
    for (const Field field : KEPT)
        m.*field = 77;
    std::fill_n(m.display_line, DISPLAY_LINE_SIZE, 'x');
    m.stmt_start = "A";
    m.for_frames[0].text = m.gosub_frames[0].text = "A";
    m.run_state = STATE_RUN;
    reset_machine(m);
    for (std::size_t i = 0; i < std::size(CLEARED); ++i)
        EXPECT_EQ(m.*CLEARED[i], 0) << "field " << i;
    for (std::size_t i = 0; i < std::size(KEPT); ++i)
        EXPECT_EQ(m.*KEPT[i], 77) << "field " << i;
    EXPECT_EQ(m.run_state, STATE_SELECT);
    EXPECT_EQ(std::string(m.display_line), std::string(DISPLAY_LINE_SIZE, ' '));
    EXPECT_EQ(m.stmt_start, nullptr);
    EXPECT_EQ(m.for_frames[0].text, nullptr);
    EXPECT_EQ(m.gosub_frames[0].text, nullptr);
    EXPECT_EQ(m.variables[4].number, 5);
    EXPECT_EQ(m.areas[3].line_count, 1);
}

} // namespace
} // namespace quillon::testing
