// Clicks on the LCD, in canvas pixels.
#include "keys/lcd_click.h"

#include "core/machine.h"

namespace quillon {
namespace {

/// Where an angle indicator takes clicks, both ends included; the first pixel of the second and third is one further.
struct AngleRange {
    int left;
    int right;
};

constexpr int INDICATOR_TOP = 16;
constexpr int INDICATOR_BOTTOM = 24;
constexpr AngleRange ANGLE_RANGES[] = {{84, 114}, {115, 147}, {147, 179}}; // DEG, RAD, GRA
constexpr int CELLS_TOP = 40;
constexpr int CELLS_BOTTOM = 84;

/// Left edges of the areas' places on the display, P9 first.
constexpr int AREA_EDGES[AREA_COUNT] = {360, 324, 292, 260, 228, 196, 164, 132, 100, 68};

bool choose_angle_unit(Machine& m, int x, int y) {
    if (y < INDICATOR_TOP * m.zoom || y > INDICATOR_BOTTOM * m.zoom)
        return false;
    for (int unit = ANGLE_DEG; unit <= ANGLE_GRA; ++unit) {
        const AngleRange& range = ANGLE_RANGES[unit];
        const bool behind_left = unit == ANGLE_DEG ? x >= range.left * m.zoom : x > range.left * m.zoom;
        if (behind_left && x <= range.right * m.zoom) {
            m.angle_unit = unit;
            return true;
        }
    }
    return false;
}

void choose_area(Machine& m, int x) {
    for (int i = 0; i < AREA_COUNT; ++i) {
        if (AREA_EDGES[i] * m.zoom <= x) {
            m.run_page = AREA_COUNT - 1 - i;
            return;
        }
    }
}

} // namespace

void on_lcd_click(Machine& m, LcdClick click, int x, int y, int toolbar_height) {
    const int lcd_y = y - toolbar_height;
    if (choose_angle_unit(m, x, lcd_y))
        return;
    if (m.run_state != STATE_SELECT) {
        m.enter_request = 1;
        return;
    }
    if (lcd_y < CELLS_TOP * m.zoom || lcd_y > CELLS_BOTTOM * m.zoom)
        return;
    choose_area(m, x);
    if (click == LcdClick::LEFT_DOUBLE)
        m.host.run_command(COMMAND_RUN);
}

} // namespace quillon
