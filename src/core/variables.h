// The variable cells: which cell a name means, and the two ways of storing into one.
#pragma once

#include "core/machine.h"

#include <string_view>

namespace quillon {

/// The cell `letter` (0-25) + `index`, or null when that lies outside the cells that subscripts reach.
Variable* variable_cell(Machine& m, int letter, int index);

/// The string variable $.
Variable& dollar_var(Machine& m);

/// Makes the cell hold a number.
inline void store_number(Variable& cell, double number) {
    cell.number = number;
    cell.kind = 0;
    cell.string_flag = 0;
    cell.text.clear();
}

/// Makes the cell hold a string of at most 31 characters.
void store_string(Variable& cell, std::string_view text);

/// The characters of a string literal that a cell keeps: 7, or 30 for $.
std::string_view literal_part(const Machine& m, const Variable& cell, std::string_view text);

/// What a value counts as. A cell read with "$" counts as a string whatever it holds; read without, as what it holds,
/// and as a number when it was never assigned.
inline ValueType value_type(const Value& value) {
    switch (value.kind) {
    case VALUE_NUMBER: return TYPE_NUMBER;
    case VALUE_NUMVAR: return value.variable->kind == 1 ? TYPE_STRING : TYPE_NUMBER;
    case VALUE_STRVAR:
    case VALUE_STRING: return TYPE_STRING;
    default: return TYPE_NONE;
    }
}

/// Whether the value is a number, or a cell that holds one: what statements ask for that need a number.
bool is_number(const Value& value);

} // namespace quillon
