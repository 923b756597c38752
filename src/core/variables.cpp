// SPDX-License-Identifier: MIT
// Cells and the types of values.
#include "core/variables.h"

#include <string>

namespace quillon {

CellIndex variable_cell(int letter, int index) {
    const long long cell = static_cast<long long>(letter) + index;
    return cell >= 0 && cell < DOLLAR_CELL ? static_cast<CellIndex>(cell) : NO_CELL;
}

BoundedText<3> cell_name(int cell) {
    constexpr int LETTER_COUNT = 26;
    if (cell >= LETTER_COUNT)
        return {std::to_string(cell - LETTER_COUNT + 1)};
    const char letter = static_cast<char>('A' + cell);
    return {std::string_view(&letter, 1)};
}

void store_string(Variable& cell, std::string_view text) {
    cell.text.assign(text);
    cell.number = 0;
    cell.kind = CELL_STRING;
    cell.string_flag = true;
}

std::string_view literal_part(CellIndex cell, std::string_view text) {
    constexpr std::size_t LITERAL_MAX = 7;
    constexpr std::size_t DOLLAR_LITERAL_MAX = 30;
    return text.substr(0, cell == DOLLAR_CELL ? DOLLAR_LITERAL_MAX : LITERAL_MAX);
}

bool is_number(const Machine& m) {
    const ValueKind kind = m.eval.value.kind;
    return (kind == VALUE_NUMBER || kind == VALUE_NUMVAR) && value_type(m) == TYPE_NUMBER;
}

} // namespace quillon
