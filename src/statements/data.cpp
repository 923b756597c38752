// SPDX-License-Identifier: MIT
// Walking the DATA index.
#include "statements/data.h"

#include "core/arguments.h"
#include "core/charset.h"
#include "core/data_items.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program.h"
#include "core/variables.h"
#include "statements/signatures.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_READ_MISSING{"READ", 0};
constexpr MessageId MESSAGE_READ_NO_VARIABLE{"READ", 1};
constexpr MessageId MESSAGE_READ_NO_DATA{"READ", 2};
constexpr MessageId MESSAGE_READ_NOT_A_NUMBER{"READ", 3};
constexpr MessageId MESSAGE_RESTORE_NO_DATA{"RESTORE", 0};
constexpr MessageId MESSAGE_RESTORE_NO_LINE{"RESTORE", 3};

const DataItem& entry_at(const Machine& m, int index) { return m.listing->data[static_cast<std::size_t>(index)]; }

bool ends_data(const Machine& m, int index) { return ends_area_data(*m.listing, index); }

/// Reads the variable that comes next in the list; NO_CELL after an error.
CellIndex read_target(Machine& m) {
    m.eval.value.kind = VALUE_NONE;
    const TokenCode token = next_token(m);
    if (failed(m))
        return NO_CELL;
    if (token == TOKEN_NUMVAR || token == TOKEN_STRVAR)
        return m.eval.value.cell;
    if (is_fault(token))
        enter_error(m, error_of(token)); // the detail has been composed
    else
        raise_error(m, ERROR_SYNTAX, m.eval.value.kind == VALUE_NONE ? MESSAGE_READ_MISSING : MESSAGE_READ_NO_VARIABLE);
    return NO_CELL;
}

/// Moves the READ position to the next item of the area; null when it has no more.
const DataItem* find_item(Machine& m) {
    int index = m.program.data_pos;
    while (!ends_data(m, index) && entry_at(m, index).kind == DataItem::LINE)
        ++index;
    if (ends_data(m, index))
        return nullptr;
    m.program.data_pos = index;
    return &entry_at(m, index);
}

void assign_number(Machine& m, Variable& cell, const DataItem& item) {
    store_number(cell, cell.number);
    std::size_t used = 0;
    const double number = parse_decimal(item.text, used);
    if (used == item.text.size()) {
        cell.number = number;
        return;
    }
    char shown[200];
    raise_error(m, ERROR_SYNTAX, MESSAGE_READ_NOT_A_NUMBER, " DATA:\"%s\"",
                escape_text(item.text, shown, sizeof shown));
}

/// The entry of the current area's first DATA line from `index` on, -1 when there is none.
int find_data_line(const Machine& m, int index) {
    for (; !ends_data(m, index); ++index) {
        if (entry_at(m, index).kind == DataItem::LINE)
            return index;
    }
    return -1;
}

void restore_first(Machine& m, int area_entry) {
    const int line = find_data_line(m, area_entry + 1);
    if (line < 0)
        compose_detail(m, MESSAGE_RESTORE_NO_DATA);
    m.program.data_pos = line + 1;
}

void restore_line(Machine& m, int area_entry, int number) {
    int line = find_data_line(m, area_entry + 1);
    while (line >= 0 && entry_at(m, line).arg != number)
        line = find_data_line(m, line + 1);
    if (line < 0)
        return raise_error(m, ERROR_LINE, MESSAGE_RESTORE_NO_LINE);
    m.program.data_pos = line + 1;
}

} // namespace

void read_statement(Machine& m) {
    do {
        const CellIndex cell = read_target(m);
        if (cell == NO_CELL)
            return;
        const bool to_string = m.eval.token == TOKEN_STRVAR;
        const DataItem* item = find_item(m);
        if (item == nullptr)
            return raise_error(m, ERROR_LINE, MESSAGE_READ_NO_DATA);
        if (to_string)
            store_string(cell_at(m, cell), literal_part(cell, item->text));
        else
            assign_number(m, cell_at(m, cell), *item);
        if (failed(m))
            return;
        ++m.program.data_pos;
    } while (next_token(m) == TOKEN_COMMA);
}

void restore_statement(Machine& m) {
    const int area_entry = find_area_data(*m.listing, m.program.cur_area);
    if (area_entry < 0) {
        compose_detail(m, MESSAGE_RESTORE_NO_DATA);
        return restore_area_data(m);
    }
    Arguments arguments;
    if (!read_arguments(m, signature_of<TOKEN_RESTORE>(), arguments))
        return;
    if (m.eval.value.kind == VALUE_NONE)
        restore_first(m, area_entry);
    else
        restore_line(m, area_entry, static_cast<int>(arguments.number[0]));
}

} // namespace quillon
