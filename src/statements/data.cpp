// Walking the DATA index.
#include "statements/data.h"

#include "core/charset.h"
#include "core/data_index.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/listing.h"
#include "core/numbers.h"
#include "core/variables.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_READ_MISSING{"READ", 0};
constexpr MessageId MESSAGE_READ_NO_VARIABLE{"READ", 1};
constexpr MessageId MESSAGE_READ_NO_DATA{"READ", 2};
constexpr MessageId MESSAGE_READ_NOT_A_NUMBER{"READ", 3};
constexpr MessageId MESSAGE_RESTORE_NO_DATA{"RESTORE", 0};
constexpr MessageId MESSAGE_RESTORE_STRING_VARIABLE{"RESTORE", 1};
constexpr MessageId MESSAGE_RESTORE_STRING{"RESTORE", 2};
constexpr MessageId MESSAGE_RESTORE_NO_LINE{"RESTORE", 3};

const DataItem& entry_at(const Machine& m, int index) { return m.data_index[static_cast<std::size_t>(index)]; }

/// Reads the variable that comes next in the list; null after an error.
Variable* read_target(Machine& m) {
    m.value.kind = VALUE_NONE;
    const int token = next_token(m);
    if (m.error_code != ERROR_NONE)
        return nullptr;
    if (token == TOKEN_NUMVAR || token == TOKEN_STRVAR)
        return m.value.variable;
    if (token < TOKEN_COLON)
        enter_error(m, static_cast<ErrorCode>(token)); // the detail has been composed
    else
        raise_error(m, ERROR_SYNTAX, m.value.kind == VALUE_NONE ? MESSAGE_READ_MISSING : MESSAGE_READ_NO_VARIABLE);
    return nullptr;
}

/// Moves the READ position to the next item of the area; null when it has no more.
const DataItem* find_item(Machine& m) {
    int index = m.data_pos;
    while (!ends_area_data(m, index) && entry_at(m, index).kind == DataItem::LINE)
        ++index;
    if (ends_area_data(m, index))
        return nullptr;
    m.data_pos = index;
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
    for (; !ends_area_data(m, index); ++index) {
        if (entry_at(m, index).kind == DataItem::LINE)
            return index;
    }
    return -1;
}

void restore_first(Machine& m, int area_entry) {
    const int line = find_data_line(m, area_entry + 1);
    if (line < 0)
        compose_detail(m, MESSAGE_RESTORE_NO_DATA);
    m.data_pos = line + 1;
}

void restore_line(Machine& m, int area_entry, int number) {
    int line = find_data_line(m, area_entry + 1);
    while (line >= 0 && entry_at(m, line).arg != number)
        line = find_data_line(m, line + 1);
    if (line < 0)
        return raise_error(m, ERROR_LINE, MESSAGE_RESTORE_NO_LINE);
    m.data_pos = line + 1;
}

} // namespace

void read_statement(Machine& m) {
    do {
        Variable* cell = read_target(m);
        if (cell == nullptr)
            return;
        const bool to_string = m.token == TOKEN_STRVAR;
        const DataItem* item = find_item(m);
        if (item == nullptr)
            return raise_error(m, ERROR_LINE, MESSAGE_READ_NO_DATA);
        if (to_string)
            store_string(*cell, literal_part(m, *cell, item->text));
        else
            assign_number(m, *cell, *item);
        if (m.error_code != ERROR_NONE)
            return;
        ++m.data_pos;
    } while (next_token(m) == ',');
}

void restore_statement(Machine& m) {
    const int area_entry = find_area_data(m);
    if (area_entry < 0) {
        compose_detail(m, MESSAGE_RESTORE_NO_DATA);
        return restore_area_data(m);
    }
    const double number = eval_argument(m);
    if (m.error_code != ERROR_NONE)
        return;
    if (m.value.kind == VALUE_NONE)
        restore_first(m, area_entry);
    else if (m.value.kind == VALUE_STRVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_RESTORE_STRING_VARIABLE);
    else if (value_type(m.value) == TYPE_STRING)
        raise_error(m, ERROR_SYNTAX, MESSAGE_RESTORE_STRING);
    else
        restore_line(m, area_entry, truncate_to_int(round6(number)));
}

} // namespace quillon
