// Clicks on the LCD: every edge of the angle indicators and of the areas' places, at every zoom, below a toolbar.
#include "keys/lcd_click.h"

#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr LcdClick CLICKS[] = {LcdClick::LEFT, LcdClick::LEFT_DOUBLE, LcdClick::RIGHT};
constexpr int TOOLBAR = 31;
constexpr int ZOOM_MAX = 12;

/// Clicks, and tells what that changed and which commands it gave. `y` counts from the top of the LCD.
std::string effect_of(int run_state, LcdClick click, int zoom, int x, int y) {
    Machine m;
    m.run_state = run_state;
    m.angle_unit = 9;
    m.run_page = 99;
    m.zoom = zoom;
    std::string effect;
    m.host.run_command = [&effect](int command) { effect += " command " + std::to_string(command); };
    on_lcd_click(m, click, x, y + TOOLBAR, TOOLBAR);
    if (m.angle_unit != 9)
        effect = "unit " + std::to_string(m.angle_unit) + effect;
    if (m.run_page != 99)
        effect = "area " + std::to_string(m.run_page) + effect;
    return (m.enter_request != 0 ? "exe" : "") + effect;
}

/// A place by pixels of the canvas and, beyond them, of the window.
struct Edge {
    int canvas;
    int more;
    const char* effect;
};

TEST(LcdClick, OnTheAngleRowChoosesTheUnit) {
    const Edge columns[] = {
        {84, -1, "exe"},    {84, 0, "unit 0"},  {114, 0, "unit 0"}, {114, 1, "exe"},
        {115, 0, "exe"},    {115, 1, "unit 1"}, {147, 0, "unit 1"}, {147, 1, "unit 2"},
        {179, 0, "unit 2"}, {179, 1, "exe"},    {0, 0, "exe"},      {391, 0, "exe"},
    };
    const Edge rows[] = {{16, -1, "exe"}, {16, 0, nullptr}, {20, 0, nullptr}, {24, 0, nullptr}, {24, 1, "exe"}};
    for (int zoom = 1; zoom <= ZOOM_MAX; ++zoom) {
        for (const Edge& column : columns) {
            for (const Edge& row : rows) {
                const int x = column.canvas * zoom + column.more;
                const int y = row.canvas * zoom + row.more;
                SCOPED_TRACE(std::to_string(x) + "," + std::to_string(y) + " at zoom " + std::to_string(zoom));
                const std::string expected = row.effect != nullptr ? row.effect : column.effect;
                for (const LcdClick click : CLICKS)
                    EXPECT_EQ(effect_of(STATE_RUN, click, zoom, x, y), expected);
                EXPECT_EQ(effect_of(STATE_SELECT, LcdClick::LEFT, zoom, x, y), expected == "exe" ? "" : expected);
            }
        }
    }
}

TEST(LcdClick, OnAPlaceSelectsTheArea) {
    const int left_edges[] = {68, 100, 132, 164, 196, 228, 260, 292, 324, 360, 392}; // of the areas 0 to 9, and the end
    for (int zoom = 1; zoom <= ZOOM_MAX; ++zoom) {
        for (const LcdClick click : CLICKS) {
            SCOPED_TRACE(zoom);
            const std::string run = click == LcdClick::LEFT_DOUBLE ? " command 40003" : "";
            for (const int y : {40 * zoom, 62 * zoom, 84 * zoom}) {
                for (int area = 0; area < 10; ++area) {
                    const std::string hit = "area " + std::to_string(area) + run;
                    EXPECT_EQ(effect_of(STATE_SELECT, click, zoom, left_edges[area] * zoom, y), hit);
                    EXPECT_EQ(effect_of(STATE_SELECT, click, zoom, left_edges[area + 1] * zoom - 1, y), hit);
                }
                EXPECT_EQ(effect_of(STATE_SELECT, click, zoom, 68 * zoom - 1, y), run) << "the one selected already";
            }
            for (const int y : {40 * zoom - 1, 84 * zoom + 1})
                EXPECT_EQ(effect_of(STATE_SELECT, click, zoom, 200 * zoom, y), "") << y;
        }
    }
}

TEST(LcdClick, AnywhereElseIsExe) {
    for (int state = STATE_RUN; state <= STATE_TO_COMMAND; ++state) {
        const std::string expected = state == STATE_SELECT ? "" : "exe";
        for (const int y : {-TOOLBAR, 0, 39, 85, 88, 100000, -100000})
            for (const LcdClick click : CLICKS)
                EXPECT_EQ(effect_of(state, click, 1, 200, y), expected) << state << " at " << y;
        EXPECT_EQ(effect_of(state, LcdClick::RIGHT, 1, 200, 60), state == STATE_SELECT ? "area 4" : "exe");
    }
}

} // namespace
} // namespace quillon::testing
