// SPDX-License-Identifier: MIT
// The scanner: from a position in program text to the token that stands there. It is pure: it evaluates nothing,
// raises nothing and knows no machine, so the loader, a checker and a highlighter may use it as it stands.
#pragma once

#include "core/text.h"
#include "core/token.h"

#include <cstdint>
#include <string_view>

namespace quillon {

/// Why a token cannot be read (TOKEN_LEXICAL_ERROR).
enum class ScanFault : std::uint8_t {
    NONE,
    UNKNOWN_WORD,  ///< a word that is not in the vocabulary, or longer than 127 characters
    BAD_NUMBER,    ///< two points, or more than 125 characters
    BAD_LITERAL,   ///< an unknown escape in a string literal
    BAD_AMPERSAND, ///< "&" without an H behind it
};

/// A token of program text.
struct Token {
    TokenCode code = TOKEN_END;
    const char* begin = nullptr; ///< its first character
    const char* end = nullptr;   ///< the character behind it; of a subscripted variable, its "("
    double number = 0;           ///< of TOKEN_NUMBER
    int letter = 0;              ///< of variables: 0-25, or DOLLAR_LETTER for $
    bool subscripted = false;    ///< a variable directly followed by "("
    ScanFault fault = ScanFault::NONE;
};

/// `Token::letter` of the string variable $, which has no subscripts.
constexpr int DOLLAR_LETTER = -1;

/// The text of a string literal, or of a word.
using TokenText = BoundedText<127>;

/// The token at or after `text`, which ends at a NUL. Blanks, tabs and CRs before it are skipped. Never reads beyond
/// the NUL.
Token scan_token(const char* text);

/// The first character at or after `text` that is no blank, tab or CR.
const char* skip_blanks(const char* text);

/// Reads the literal that `token` (TOKEN_STRING) stands for, its escapes decoded; at most 127 characters.
void read_literal(const Token& token, TokenText& text);

/// The word at a token as the scanner reads it, in lower case; at most 127 characters.
TokenText word_text(const Token& token);

/// Moves over the rest of a statement: to the character behind the next ":" outside literals, or to the end of the
/// line. `ended_line` tells which.
const char* skip_to_statement_end(const char* text, bool& ended_line);

} // namespace quillon
