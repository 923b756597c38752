// SPDX-License-Identifier: MIT
// Results and angles.
#include "functions/results.h"

#include "core/machine.h"

#include <numbers>

namespace quillon {

double number_result(Machine& m, double x) {
    m.eval.value.kind = VALUE_NUMBER;
    m.eval.value.cell = NO_CELL;
    m.eval.value.number = x;
    m.eval.value.complete = true;
    return x;
}

double string_result(Machine& m, std::string_view text) {
    m.eval.value.kind = VALUE_STRING;
    m.eval.value.cell = NO_CELL;
    m.eval.value.number = 0;
    m.eval.value.complete = true;
    m.eval.value.text = text;
    return 0;
}

double to_radians(const Machine& m, double angle) {
    switch (m.settings.angle_unit) {
    case ANGLE_DEG: return angle * std::numbers::pi / 180;
    case ANGLE_GRA: return angle * std::numbers::pi / 200;
    default: return angle;
    }
}

double from_radians(const Machine& m, double radians) {
    switch (m.settings.angle_unit) {
    case ANGLE_DEG: return radians * 180 / std::numbers::pi;
    case ANGLE_GRA: return radians * 200 / std::numbers::pi;
    default: return radians;
    }
}

} // namespace quillon
