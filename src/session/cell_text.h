// SPDX-License-Identifier: MIT
// Variable cells as text: their names, and what they hold.
#pragma once

#include "core/machine.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// The cell of a name as people write it: "A", "A(3)", "$", or the number of a cell beyond Z ("12").
std::optional<CellIndex> find_cell(std::string_view name);

/// A name that `find_cell` finds the cell by.
std::string cell_path(CellIndex cell);

/// The text of what a cell holds: a number that reads back with the same bits, a string in quotes, or "-" for a cell
/// that was never assigned. Nothing for a cell that no such text stands for (an infinity, or what only statements
/// leave).
std::optional<std::string> cell_text(const Variable& cell);

/// The cell that a text stands for; strings are cut to what a cell holds.
std::optional<Variable> parse_cell(std::string_view text);

} // namespace quillon
