// SPDX-License-Identifier: MIT
// Clicks on the LCD, in canvas pixels.
#include "core/controls.h"
#include "core/machine.h"

namespace quillon {
namespace {

/// Where an angle indicator takes clicks, both ends included.
struct AngleRange {
    int left;
    int right;
};

constexpr int INDICATOR_TOP = 16;
constexpr int INDICATOR_BOTTOM = 24;
constexpr AngleRange ANGLE_RANGES[] = {{84, 114}, {116, 147}, {148, 179}}; // DEG, RAD, GRA
constexpr int CELLS_TOP = 40;
constexpr int CELLS_BOTTOM = 84;

/// Left edges of the areas' places on the display, P9 first.
constexpr int AREA_EDGES[AREA_COUNT] = {360, 324, 292, 260, 228, 196, 164, 132, 100, 68};

bool choose_angle_unit(Machine& m, int x, int y) {
    if (y < INDICATOR_TOP || y > INDICATOR_BOTTOM)
        return false;
    for (const AngleUnit unit : {ANGLE_DEG, ANGLE_RAD, ANGLE_GRA}) {
        const AngleRange& range = ANGLE_RANGES[number_of(unit)];
        if (x >= range.left && x <= range.right) {
            m.settings.angle_unit = unit;
            return true;
        }
    }
    return false;
}

void choose_area(Machine& m, int x) {
    for (int i = 0; i < AREA_COUNT; ++i) {
        if (AREA_EDGES[i] <= x) {
            m.settings.run_page = AREA_COUNT - 1 - i;
            return;
        }
    }
}

} // namespace

void on_lcd_click(Machine& m, LcdClick click, int x, int y) {
    if (choose_angle_unit(m, x, y))
        return;
    if (m.run.run_state != STATE_SELECT)
        return press_exe(m);
    if (y < CELLS_TOP || y > CELLS_BOTTOM)
        return;
    choose_area(m, x);
    if (click == LcdClick::LEFT_DOUBLE)
        m.around->host.run_command(COMMAND_RUN);
}

} // namespace quillon
