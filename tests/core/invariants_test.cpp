// A machine is whole after any reset, and each kind of damage is named.
#include "core/invariants.h"

#include "core/machine.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::testing {
namespace {

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
