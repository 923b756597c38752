// SPDX-License-Identifier: MIT
// Tokens as the interpreter walks them: 16 bytes each, in one row for a whole listing or for a typed line. They are
// made once, by the load or when a line is committed; nothing that runs reads program text.
#pragma once

#include "core/scanner.h"
#include "core/text.h"
#include "core/token.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace quillon {

/// A place in the tokens that run: an index into those of the listing or, from TYPED on, into those of the typed line.
using TokenIndex = std::int32_t;

/// A place in program text: an offset into the listing's text or, from TYPED on, into that of the typed line.
using SourceOffset = std::int32_t;

constexpr std::int32_t NOWHERE = -1;
constexpr std::int32_t TYPED = 1 << 28; ///< far beyond the offsets of the largest listing

/// Where the decoded text of a literal is kept.
struct LiteralPlace {
    std::uint32_t at;
    std::uint32_t size;
};

struct ProgramToken { // NOLINT(cppcoreguidelines-pro-type-member-init): a union has one of its members
    TokenCode code = TOKEN_END;
    std::int8_t letter = 0;   ///< of variables: 0-25, or DOLLAR_LETTER for $
    bool subscripted = false; ///< a variable directly followed by "(", which is the next token
    SourceOffset begin = 0;   ///< its first character
    union {
        double number = 0; ///< of TOKEN_NUMBER
        LiteralPlace text; ///< of TOKEN_STRING
        ScanFault fault;   ///< of TOKEN_LEXICAL_ERROR
    };
};
static_assert(sizeof(ProgramToken) == 16);

/// Makes a program token of what the scanner read `offset` bytes into a text that begins at `base`. The decoded text of
/// a literal is appended to `literals`.
template <typename Literals>
ProgramToken make_program_token(const Token& token, SourceOffset begin, Literals& literals) {
    ProgramToken made;
    made.code = token.code;
    made.letter = static_cast<std::int8_t>(token.letter);
    made.subscripted = token.subscripted;
    made.begin = begin;
    if (token.code == TOKEN_STRING) {
        TokenText text;
        read_literal(token, text);
        made.text = {static_cast<std::uint32_t>(literals.size()), static_cast<std::uint32_t>(text.size())};
        literals.append(text.view());
    } else if (token.code == TOKEN_LEXICAL_ERROR) {
        made.fault = token.fault;
    } else {
        made.number = token.number;
    }
    return made;
}

/// A committed line: a command line or an entry of INPUT, and its tokens.
struct TypedLine {
    BoundedText<127> text;
    BoundedText<127> literals;            ///< the decoded texts of its string literals, one after the other
    std::array<ProgramToken, 128> tokens; ///< all after the last one are ends of the line
};

/// Takes over a line and makes its tokens.
void set_typed_line(TypedLine& line, std::string_view text);

} // namespace quillon
