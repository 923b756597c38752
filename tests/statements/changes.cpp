// Describing a machine by what is not as in a new one.
#include "tests/statements/changes.h"

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
    for (const Variable& variable : m.variables) {
        const std::string name = " " + std::string(variable.name.view());
        if (variable.kind == 1 || !variable.text.empty())
            text += name + "$=" + std::string(variable.text.view());
        else if (variable.kind == 0 || variable.number != 0)
            text += name + "=" + shown_number(variable.number);
    }
    text += m.gosub_depth > 0 ? " calls " + std::to_string(m.gosub_depth) : "";
    for (int i = 0; i < m.for_depth; ++i) {
        const ForFrame& loop = m.for_frames[static_cast<std::size_t>(i)];
        text += (i == 0 ? " loops " : ",") + std::string(loop.variable->name.view()) + ".." + shown_number(loop.limit);
        text += loop.step == 1 ? "" : "/" + shown_number(loop.step);
    }
    constexpr const char* units[] = {"", " RAD", " GRA"};
    text += units[m.angle_unit] + std::string(m.print_mode != 0 ? " PRT" : "");
    text += m.set_e_digits >= 0 ? " E" + std::to_string(m.set_e_digits) : "";
    text += m.set_f_digits >= 0 ? " F" + std::to_string(m.set_f_digits) : "";
    text += m.set_g_digits != 9 ? " G" + std::to_string(m.set_g_digits) : "";
    return text + (m.trace_mode != 0 ? " TR" : "");
}

} // namespace quillon::testing
