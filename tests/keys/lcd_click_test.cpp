// SPDX-License-Identifier: MIT
// Clicks on the LCD: every edge of the angle indicators and of the areas' places, at every zoom, below a toolbar.
#include "core/controls.h"

#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr LcdClick CLICKS[] = {LcdClick::LEFT, LcdClick::LEFT_DOUBLE, LcdClick::RIGHT};

/// Clicks, and tells what that changed and which commands it gave.
std::string effect_of(RunState run_state, LcdClick click, int x, int y) {
    constexpr auto NO_UNIT = static_cast<AngleUnit>(9);
    Surroundings around;
    Machine m;
    m.around.pointer = &around;
    m.run.run_state = run_state;
    m.settings.angle_unit = NO_UNIT;
    m.settings.run_page = 99;
    std::string effect;
    around.host.run_command = [&effect](int command) { effect += " command " + std::to_string(command); };
    on_lcd_click(m, click, x, y);
    if (m.settings.angle_unit != NO_UNIT)
        effect = "unit " + std::to_string(number_of(m.settings.angle_unit)) + effect;
    if (m.settings.run_page != 99)
        effect = "area " + std::to_string(m.settings.run_page) + effect;
    return (m.keys.enter_request ? "exe" : "") + effect;
}

TEST(LcdClick, OnTheAngleRowChoosesTheUnit) {
    const std::pair<int, const char*> columns[] = {{83, "exe"},     {84, "unit 0"},  {114, "unit 0"}, {115, "exe"},
                                                   {116, "unit 1"}, {147, "unit 1"}, {148, "unit 2"}, {179, "unit 2"},
                                                   {180, "exe"},    {0, "exe"},      {391, "exe"}};
    for (const auto& [x, effect] : columns) {
        for (const int y : {15, 16, 20, 24, 25}) {
            const std::string expected = y >= 16 && y <= 24 ? effect : "exe";
            for (const LcdClick click : CLICKS)
                EXPECT_EQ(effect_of(STATE_RUN, click, x, y), expected) << x << "," << y;
            EXPECT_EQ(effect_of(STATE_SELECT, LcdClick::LEFT, x, y), expected == "exe" ? "" : expected);
        }
    }
}

TEST(LcdClick, OnAPlaceSelectsTheArea) {
    const int left_edges[] = {68, 100, 132, 164, 196, 228, 260, 292, 324, 360, 392}; // of the areas 0 to 9, and the end
    for (const LcdClick click : CLICKS) {
        const std::string run = click == LcdClick::LEFT_DOUBLE ? " command 40003" : "";
        for (const int y : {40, 62, 84}) {
            for (int area = 0; area < 10; ++area) {
                const std::string hit = "area " + std::to_string(area) + run;
                EXPECT_EQ(effect_of(STATE_SELECT, click, left_edges[area], y), hit);
                EXPECT_EQ(effect_of(STATE_SELECT, click, left_edges[area + 1] - 1, y), hit);
            }
            EXPECT_EQ(effect_of(STATE_SELECT, click, 67, y), run) << "the one selected already";
        }
        for (const int y : {39, 85})
            EXPECT_EQ(effect_of(STATE_SELECT, click, 200, y), "") << y;
    }
}

TEST(LcdClick, AnywhereElseIsExe) {
    for (int number = 0; number <= number_of(STATE_TO_COMMAND); ++number) {
        const auto state = static_cast<RunState>(number);
        const std::string expected = state == STATE_SELECT ? "" : "exe";
        for (const int y : {-31, 0, 39, 85, 88, 100000, -100000})
            for (const LcdClick click : CLICKS)
                EXPECT_EQ(effect_of(state, click, 200, y), expected) << number << " at " << y;
        EXPECT_EQ(effect_of(state, LcdClick::RIGHT, 200, 60), state == STATE_SELECT ? "area 4" : "exe");
    }
}

} // namespace
} // namespace quillon::testing
