// SPDX-License-Identifier: MIT
// Records of the saved values, field by field.
#include "shell/saved_values.h"

#include "core/machine.h"
#include "core/numbers.h"
#include "core/variables.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace quillon {
namespace {

// A record's fields, by offset.
constexpr std::size_t FIELD_NAME = 0;
constexpr std::size_t NAME_SIZE = 4;
constexpr std::size_t FIELD_TYPE = 4;
constexpr std::size_t FIELD_STRING_FLAG = 8;
constexpr std::size_t FIELD_NUMBER = 12;
constexpr std::size_t FIELD_TEXT = 20;
constexpr std::size_t TEXT_SIZE = 32;
constexpr std::size_t RECORD_SIZE = FIELD_TEXT + TEXT_SIZE;
constexpr std::size_t RECORDS_END = CELL_COUNT * RECORD_SIZE;
static_assert(RECORDS_END + 104 == VALUES_IMAGE_SIZE);

constexpr int NEVER_ASSIGNED = -1;
constexpr int HOLDS_NUMBER = 0;
constexpr int HOLDS_STRING = 1;

using Bytes = std::span<const std::uint8_t>;

void put_number(std::span<std::uint8_t> field, std::uint64_t number) {
    for (std::uint8_t& byte : field) {
        byte = static_cast<std::uint8_t>(number);
        number >>= 8;
    }
}

std::uint64_t get_number(Bytes field) {
    std::uint64_t number = 0;
    for (std::size_t i = field.size(); i-- > 0;)
        number = number << 8 | field[i];
    return number;
}

int get_int(Bytes record, std::size_t offset) { return static_cast<int>(get_number(record.subspan(offset, 4))); }

void put_text(std::span<std::uint8_t> field, std::string_view text) {
    std::copy(text.begin(), text.end(), field.begin()); // a bounded text: it leaves room for its NUL
}

/// The text up to its NUL; nothing when it has none.
std::optional<std::string_view> get_text(Bytes field) {
    const auto end = std::find(field.begin(), field.end(), 0);
    if (end == field.end())
        return std::nullopt;
    return std::string_view(reinterpret_cast<const char*>(field.data()), static_cast<std::size_t>(end - field.begin()));
}

void put_cell(std::span<std::uint8_t> record, const Variable& cell, std::string_view name) {
    static_assert(decltype(cell.text)::capacity() < TEXT_SIZE);
    put_text(record.subspan(FIELD_NAME, NAME_SIZE), name);
    put_number(record.subspan(FIELD_TYPE, 4), static_cast<std::uint32_t>(number_of(cell.kind)));
    put_number(record.subspan(FIELD_STRING_FLAG, 4), static_cast<std::uint32_t>(cell.string_flag));
    put_number(record.subspan(FIELD_NUMBER, 8), bits_of(cell.number));
    put_text(record.subspan(FIELD_TEXT, TEXT_SIZE), cell.text);
}

/// Fills a cell that was never assigned; false when the record is not understood. A record without a name is one that
/// an older file did not cover. The string flag follows from the type, whatever is saved.
bool get_cell(Bytes record, Variable& cell, std::string_view cell_name) {
    const auto name = get_text(record.subspan(FIELD_NAME, NAME_SIZE));
    const auto text = get_text(record.subspan(FIELD_TEXT, TEXT_SIZE));
    const int type = get_int(record, FIELD_TYPE);
    if (!name || !text || type < NEVER_ASSIGNED || type > HOLDS_STRING || !(name->empty() || *name == cell_name))
        return false;
    const auto number = number_of_bits(get_number(record.subspan(FIELD_NUMBER, 8)));
    if (!std::isfinite(number)) // what calculating beyond all numbers leaves
        return true;
    if (type == HOLDS_NUMBER)
        store_number(cell, number);
    else if (type == HOLDS_STRING)
        store_string(cell, *text);
    return true;
}

} // namespace

ValuesImage values_image(const Machine& m) {
    ValuesImage image{};
    for (std::size_t i = 0; i < CELL_COUNT; ++i)
        put_cell(std::span(image).subspan(i * RECORD_SIZE, RECORD_SIZE), m.variables[i],
                 cell_name(static_cast<int>(i)));
    return image;
}

bool read_values_image(Machine& m, Bytes bytes) {
    clear_variables(m);
    const Bytes records = bytes.first(std::min(bytes.size(), RECORDS_END));
    bool understood = records.size() % RECORD_SIZE == 0 && bytes.size() <= VALUES_IMAGE_SIZE;
    for (std::size_t i = 0; i < records.size() / RECORD_SIZE; ++i)
        understood =
            get_cell(records.subspan(i * RECORD_SIZE, RECORD_SIZE), m.variables[i], cell_name(static_cast<int>(i))) &&
            understood;
    const Bytes reserve = bytes.subspan(records.size());
    return understood && std::all_of(reserve.begin(), reserve.end(), [](std::uint8_t byte) { return byte == 0; });
}

} // namespace quillon
