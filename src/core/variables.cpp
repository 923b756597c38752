// Cells and the types of values.
#include "core/variables.h"

namespace quillon {

Variable* variable_cell(Machine& m, int letter, int index) {
    const long long cell = static_cast<long long>(letter) + index;
    return cell >= 0 && cell < DOLLAR_CELL ? &m.variables[static_cast<std::size_t>(cell)] : nullptr;
}

Variable& dollar_var(Machine& m) { return m.variables[DOLLAR_CELL]; }

void store_string(Variable& cell, std::string_view text) {
    cell.text.assign(text);
    cell.number = 0;
    cell.kind = 1;
    cell.string_flag = 1;
}

std::string_view literal_part(const Machine& m, const Variable& cell, std::string_view text) {
    constexpr std::size_t LITERAL_MAX = 7;
    constexpr std::size_t DOLLAR_LITERAL_MAX = 30;
    const bool is_dollar = &cell == &m.variables[DOLLAR_CELL];
    return text.substr(0, is_dollar ? DOLLAR_LITERAL_MAX : LITERAL_MAX);
}

bool is_number(const Value& value) {
    return (value.kind == VALUE_NUMBER || value.kind == VALUE_NUMVAR) && value_type(value) == TYPE_NUMBER;
}

} // namespace quillon
