// SPDX-License-Identifier: MIT
// Program text by its place: what errors quote and traces show, and the texts of literals.
#pragma once

#include "core/machine.h"

#include <string_view>

namespace quillon {

/// The program text at a place, up to the NUL that ends its line; "" for NOWHERE.
const char* source_at(const Machine& m, SourceOffset place);

/// The decoded text of a string literal.
inline std::string_view literal_text(const Machine& m, const ProgramToken& token) {
    const std::string_view literals =
        token.begin < TYPED ? std::string_view(m.listing->literals) : m.entry.typed.literals.view();
    return {literals.data() + token.text.at, token.text.size};
}

/// The text of a line of the current area, by the line's index; "" when it does not exist.
const char* line_text(const Machine& m, int line);

} // namespace quillon
