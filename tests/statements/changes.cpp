// SPDX-License-Identifier: MIT
// Describing a machine by what is not as in a new one.
#include "tests/statements/changes.h"

#include "core/variables.h"

namespace quillon::testing {
namespace {

std::string shown_number(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

} // namespace

std::string changes(const Machine& m) {
    std::string text;
    for (int cell = 0; cell < CELL_COUNT; ++cell) {
        const Variable& variable = m.variables[static_cast<std::size_t>(cell)];
        const std::string name = " " + std::string(cell_name(cell).view());
        if (variable.kind == CELL_STRING || !variable.text.empty())
            text += name + "$=" + std::string(variable.text.view());
        else if (variable.kind == CELL_NUMBER || variable.number != 0)
            text += name + "=" + shown_number(variable.number);
    }
    text += m.program.gosub_depth > 0 ? " calls " + std::to_string(m.program.gosub_depth) : "";
    for (int i = 0; i < m.program.for_depth; ++i) {
        const ForFrame& loop = m.program.for_frames[static_cast<std::size_t>(i)];
        text += (i == 0 ? " loops " : ",") + std::string(cell_name(loop.cell).view()) + ".." + shown_number(loop.limit);
        text += loop.step == 1 ? "" : "/" + shown_number(loop.step);
    }
    constexpr const char* units[] = {"", " RAD", " GRA"};
    text += units[number_of(m.settings.angle_unit)] + std::string(m.screen.print_mode ? " PRT" : "");
    text += m.settings.set_e_digits >= 0 ? " E" + std::to_string(m.settings.set_e_digits) : "";
    text += m.settings.set_f_digits >= 0 ? " F" + std::to_string(m.settings.set_f_digits) : "";
    text += m.settings.set_g_digits != 9 ? " G" + std::to_string(m.settings.set_g_digits) : "";
    return text + (m.trace.trace_mode ? " TR" : "");
}

} // namespace quillon::testing
