// SPDX-License-Identifier: MIT
// Builds the keyword table from the vocabulary at compile time and looks words up in it.
#include "core/keywords.h"

#include <array>
#include <cstddef>

namespace quillon {
namespace {

constexpr Keyword VOCABULARY[] = {
#define WORD(spelling, code, name) {spelling, TOKEN_##name},
#define ALSO(spelling, name) {spelling, TOKEN_##name},
#include "core/vocabulary.def"
};

constexpr std::size_t SLOT_COUNT = 4500;
constexpr std::int16_t NO_ROW = -1;

/// For each slot the vocabulary row registered last in it, and for each row the one that it displaced.
struct KeywordTable {
    std::array<std::int16_t, SLOT_COUNT> last_row;
    std::array<std::int16_t, std::size(VOCABULARY)> displaced_row;
};

/// The slot of a word, taken with a sign as the machine does; a negative one lies outside the table.
constexpr std::int32_t slot_of(std::string_view word) {
    return static_cast<std::int32_t>(word_hash(word)) % static_cast<std::int32_t>(SLOT_COUNT);
}

constexpr KeywordTable build_keyword_table() {
    KeywordTable table{};
    table.last_row.fill(NO_ROW);
    for (std::size_t row = 0; row < std::size(VOCABULARY); ++row) {
        auto& last = table.last_row[static_cast<std::size_t>(slot_of(VOCABULARY[row].spelling))];
        table.displaced_row[row] = last;
        last = static_cast<std::int16_t>(row);
    }
    return table;
}

constexpr KeywordTable TABLE = build_keyword_table();

constexpr bool same_word(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; };
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (upper(a[i]) != upper(b[i]))
            return false;
    }
    return true;
}

} // namespace

std::span<const Keyword> vocabulary() { return VOCABULARY; }

TokenCode lookup_keyword(std::string_view word) {
    const std::int32_t slot = slot_of(word);
    if (slot < 0)
        return TOKEN_UNKNOWN;
    const std::int16_t last = TABLE.last_row[static_cast<std::size_t>(slot)];
    if (last == NO_ROW)
        return TOKEN_UNKNOWN;
    for (std::int16_t row = TABLE.displaced_row[static_cast<std::size_t>(last)]; row != NO_ROW;
         row = TABLE.displaced_row[static_cast<std::size_t>(row)]) {
        if (same_word(word, VOCABULARY[row].spelling))
            return VOCABULARY[row].code;
    }
    return VOCABULARY[last].code;
}

} // namespace quillon
