// SPDX-License-Identifier: MIT
// Reading and writing names and contents of cells.
#include "session/cell_text.h"

#include "core/variables.h"
#include "session/line_reader.h"

#include <cmath>

namespace quillon {

std::optional<CellIndex> find_cell(std::string_view name) {
    constexpr int LETTER_COUNT = 26;
    if (name == "$")
        return static_cast<CellIndex>(DOLLAR_CELL);
    if (const auto number = parse_number(name, 1, DOLLAR_CELL - LETTER_COUNT))
        return static_cast<CellIndex>(LETTER_COUNT - 1 + *number);
    const bool subscripted = name.size() > 3 && name[1] == '(' && name.back() == ')';
    const int letter = name.empty() ? -1 : name[0] - 'A';
    if (letter < 0 || letter >= LETTER_COUNT || (name.size() != 1 && !subscripted))
        return std::nullopt;
    const auto index = subscripted ? parse_number(name.substr(2, name.size() - 3), 0, CELL_COUNT) : 0;
    const CellIndex cell = index ? variable_cell(letter, static_cast<int>(*index)) : NO_CELL;
    return cell == NO_CELL ? std::nullopt : std::optional(cell);
}

std::string cell_path(CellIndex cell) { return cell == DOLLAR_CELL ? "$" : std::string(cell_name(cell)); }

std::optional<std::string> cell_text(const Variable& cell) {
    constexpr int DIGITS = 17; // tell any two numbers apart
    std::string text = "-";
    if (cell.kind == CELL_STRING)
        text = '"' + std::string(cell.text) + '"';
    else if (cell.kind == CELL_NUMBER && std::isfinite(cell.number))
        text = format_general(cell.number, DIGITS).view();
    const auto read = parse_cell(text);
    return read && *read == cell ? std::optional(text) : std::nullopt;
}

std::optional<Variable> parse_cell(std::string_view text) {
    Variable cell;
    if (text == "-")
        return cell;
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        store_string(cell, text.substr(1, text.size() - 2));
        return cell;
    }
    std::size_t used = 0;
    const double number = parse_decimal(text, used);
    if (used == 0 || used != text.size() || !std::isfinite(number))
        return std::nullopt;
    store_number(cell, number);
    return cell;
}

} // namespace quillon
