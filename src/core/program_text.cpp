// SPDX-License-Identifier: MIT
// Program text by its place.
#include "core/program_text.h"

namespace quillon {

const char* source_at(const Machine& m, SourceOffset place) {
    if (place == NOWHERE)
        return "";
    return place < TYPED ? m.listing->text.c_str() + place : m.entry.typed.text.c_str() + (place - TYPED);
}

const char* line_text(const Machine& m, int line) {
    const auto& lines = current_area(m).lines;
    const auto index = static_cast<std::size_t>(line);
    return index < lines.size() ? source_at(m, lines[index].text) : "";
}

} // namespace quillon
