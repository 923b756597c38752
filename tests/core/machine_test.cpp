// What a reset clears and what it keeps; and each kind of damage to a machine is named.
#include "core/machine.h"

#include "core/invariants.h"
#include "core/variables.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quillon::testing {
namespace {

constexpr int Machine::*CLEARED[] = {
    &Machine::error_code,   &Machine::display_cursor,     &Machine::display_offset,    &Machine::for_depth,
    &Machine::gosub_depth,  &Machine::cur_line,           &Machine::cur_area,          &Machine::print_mode,
    &Machine::prev_state,   &Machine::state_after_scroll, &Machine::kind_after_scroll, &Machine::print_clear_pending,
    &Machine::wait_counter, &Machine::program_ended,      &Machine::saved_token,       &Machine::saved_stmt_kind,
};

constexpr int Machine::*KEPT[] = {
    &Machine::run_page,     &Machine::angle_unit,   &Machine::data_pos,
    &Machine::set_e_digits, &Machine::set_f_digits, &Machine::set_g_digits,
};

TEST(Machine, AResetLeavesNothingOfARun) {
    TestMachine machine;
    Machine& m = machine.m;
    ASSERT_TRUE(machine.load("[P3]\n10 A\n"));
    store_number(m.variables[4], 5);
    for (int Machine::*field : CLEARED)
        m.*field = 77;
    for (int Machine::*field : KEPT)
        m.*field = 77;
    std::fill_n(m.display_line, DISPLAY_LINE_SIZE, 'x');
    m.stmt_start = m.for_frames[0].text = m.gosub_frames[0].text = "A";
    m.run_state = STATE_RUN;
    reset_machine(m);
    for (std::size_t i = 0; i < std::size(CLEARED); ++i)
        EXPECT_EQ(m.*CLEARED[i], 0) << "field " << i;
    for (std::size_t i = 0; i < std::size(KEPT); ++i)
        EXPECT_EQ(m.*KEPT[i], 77) << "field " << i;
    EXPECT_EQ(m.run_state, STATE_SELECT);
    EXPECT_EQ(std::string(m.display_line), std::string(DISPLAY_LINE_SIZE, ' '));
    EXPECT_TRUE(m.stmt_start == nullptr && m.for_frames[0].text == nullptr && m.gosub_frames[0].text == nullptr);
    EXPECT_EQ(m.variables[4].number, 5);
    EXPECT_EQ(m.areas[3].line_count, 1);
}

const std::string TEXT_OF_NOBODY = "PRINT";
Variable cell_of_nobody;

struct Damage {
    const char* named;
    void (*damage)(Machine& m);
};

// clang-format off
constexpr Damage DAMAGES[] = {
    {"run_state",      [](Machine& m) { m.run_state = STATE_TO_COMMAND + 1; }},
    {"base_state",     [](Machine& m) { m.base_state = STATE_INPUT; }},
    {"stmt_kind",      [](Machine& m) { m.stmt_kind = 5; }},
    {"error_code",     [](Machine& m) { m.error_code = -8; }},
    {"for_depth",      [](Machine& m) { m.for_depth = FOR_DEPTH_MAX + 1; }},
    {"nesting_depth",  [](Machine& m) { m.nesting_depth = 1; }},
    {"display_cursor", [](Machine& m) { m.display_cursor = -1; }},
    {"cur_line",       [](Machine& m) { m.cur_line = 1; }},
    {"stmt_start",     [](Machine& m) { m.stmt_start = TEXT_OF_NOBODY.c_str(); }},
    {"scan_ptr",       [](Machine& m) { m.scan_ptr = nullptr; }},
    {"saved_scan_ptr", [](Machine& m) { m.saved_scan_ptr = m.listing_text.data() + m.listing_text.size() + 1; }},
    {"for_frames, gosub_frames", [](Machine& m) { m.gosub_depth = 1; }},
    {"for_frames, gosub_frames", [](Machine& m) {
        m.for_depth = 1;
        m.for_frames[0] = {&cell_of_nobody, 1, 1, 0, 0, NO_TEXT};
    }},
    {"value",          [](Machine& m) { m.value.kind = VALUE_NUMVAR; }},
    {"entry_line",     [](Machine& m) { m.run_state = STATE_INPUT; }},
    {"variables",      [](Machine& m) { m.variables[7].kind = 2; }},
    {"display_line",   [](Machine& m) { m.display_line[DISPLAY_LINE_SIZE] = ' '; }},
    {"tone",           [](Machine& m) { m.tone.samples = TONE_SAMPLES_MAX + 1; }},
};
// clang-format on

TEST(Invariants, NameWhatIsBroken) {
    for (const Damage& row : DAMAGES) {
        const auto m = std::make_unique<Machine>();
        ASSERT_EQ(check_invariants(*m), nullptr);
        row.damage(*m);
        EXPECT_STREQ(check_invariants(*m), row.named);
        EXPECT_DEATH(require_invariants(*m), row.named);
    }
}

} // namespace
} // namespace quillon::testing
