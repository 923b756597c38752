// SPDX-License-Identifier: MIT
// Token codes: what the scanner makes of a piece of program text.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillon {

/// The codes of tokens. A character that is not listed here is its own code (`character_token`). The numbers appear in
/// error texts ("0x%04x") and in scripts, so they never change.
enum class TokenCode : std::int16_t {
    TOKEN_SUBSCRIPT_ERROR = -15, ///< a subscript outside the cells; the same number as ERROR_VARIABLE
    TOKEN_LEXICAL_ERROR = -11,   ///< unreadable text; the same number as ERROR_SYNTAX
    TOKEN_COLON = -2,            ///< ":", the end of a statement
    TOKEN_END = -1,              ///< the end of the line; reading does not move past it
    TOKEN_UNKNOWN = 0,           ///< a control character, a word with an empty slot, what command mode ignores

    TOKEN_NUMBER = 1, ///< numeric literal, decimal or hexadecimal
    TOKEN_NUMVAR = 3, ///< numeric variable
    TOKEN_STRVAR = 5, ///< string variable
    TOKEN_STRING = 6, ///< string literal

    TOKEN_HASH = '#',
    TOKEN_OPEN = '(',
    TOKEN_CLOSE = ')',
    TOKEN_TIMES = '*',
    TOKEN_PLUS = '+',
    TOKEN_COMMA = ',',
    TOKEN_MINUS = '-',
    TOKEN_DIVIDE = '/',
    TOKEN_SEMICOLON = ';',
    TOKEN_LESS = '<',
    TOKEN_EQUALS = '=',
    TOKEN_GREATER = '>',
    TOKEN_POWER = '^',

    TOKEN_NE = 280,   ///< <> and !=
    TOKEN_GE = 281,   ///< >=
    TOKEN_LE = 282,   ///< <=
    TOKEN_EQEQ = 283, ///< ==

#define WORD(spelling, code, name) TOKEN_##name = code,
#define ALSO(spelling, name)
#include "core/vocabulary.def"
};
using enum TokenCode;

constexpr TokenCode FUNCTION_FIRST = TOKEN_SIN;    ///< the lowest code of a function
constexpr TokenCode FUNCTION_LAST = TOKEN_CUR;     ///< the highest code of a function
constexpr TokenCode STATEMENT_FIRST = TOKEN_INPUT; ///< the lowest code of a word that a statement begins with
constexpr TokenCode STATEMENT_LAST = TOKEN_GLOAD;  ///< the highest code of a statement word
constexpr TokenCode STATEMENT_WORD =
    TOKEN_BREAKA; ///< codes from here on are statement words, BREAK and BREAKA included

/// How far a code lies after another, as an index into a table that begins with that one.
constexpr std::size_t token_distance(TokenCode first, TokenCode code) {
    return static_cast<std::size_t>(static_cast<int>(code) - static_cast<int>(first));
}

constexpr std::size_t FUNCTION_COUNT = token_distance(FUNCTION_FIRST, FUNCTION_LAST) + 1;
constexpr std::size_t STATEMENT_COUNT = token_distance(STATEMENT_FIRST, STATEMENT_LAST) + 1;

/// The code of a character that is a token by itself.
constexpr TokenCode character_token(char c) { return static_cast<TokenCode>(static_cast<unsigned char>(c)); }

/// Whether a token is an operand by itself: a literal or a variable.
constexpr bool is_operand_token(TokenCode token) {
    return token == TOKEN_NUMBER || token == TOKEN_NUMVAR || token == TOKEN_STRVAR || token == TOKEN_STRING;
}

/// Whether a token ends a statement: ":" or the end of the line.
constexpr bool is_statement_end(TokenCode token) { return token == TOKEN_COLON || token == TOKEN_END; }

/// Whether a token is a fault of its text, its detail composed already.
constexpr bool is_fault(TokenCode token) { return token < TOKEN_COLON; }

} // namespace quillon
