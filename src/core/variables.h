// SPDX-License-Identifier: MIT
// The variable cells: which cell a name means, what it is called, and the two ways of storing into one.
#pragma once

#include "core/machine.h"

#include <string_view>

namespace quillon {

/// The cell `letter` (0-25) + `index`, NO_CELL when that lies outside the cells that subscripts reach.
CellIndex variable_cell(int letter, int index);

/// The string variable $.
inline Variable& dollar_var(Machine& m) { return m.variables[DOLLAR_CELL]; }

/// The name of a cell as people see it: "A".."Z", then "1".."197".
BoundedText<3> cell_name(int cell);

/// Makes the cell hold a number.
inline void store_number(Variable& cell, double number) {
    cell.number = number;
    cell.kind = CELL_NUMBER;
    cell.string_flag = false;
    cell.text.clear();
}

/// Makes the cell hold a string of at most 31 characters.
void store_string(Variable& cell, std::string_view text);

/// The characters of a string literal that a cell keeps: 7, or 30 for $.
std::string_view literal_part(CellIndex cell, std::string_view text);

/// What a value counts as. A cell read with "$" counts as a string whatever it holds; read without, as what it holds,
/// and as a number when it was never assigned.
inline ValueType value_type(const Machine& m, const Value& value) {
    switch (value.kind) {
    case VALUE_NUMBER: return TYPE_NUMBER;
    case VALUE_NUMVAR: return cell_at(m, value.cell).kind == CELL_STRING ? TYPE_STRING : TYPE_NUMBER;
    case VALUE_STRVAR:
    case VALUE_STRING: return TYPE_STRING;
    default: return TYPE_NONE;
    }
}

/// The same of the current operand.
inline ValueType value_type(const Machine& m) { return value_type(m, m.eval.value); }

/// Whether the current operand is a number, or a cell that holds one: what statements ask for that need a number.
bool is_number(const Machine& m);

} // namespace quillon
