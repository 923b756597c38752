// Token codes: what the scanner makes of a piece of program text.
#pragma once

namespace quillon {

/// The codes of tokens. Any character that is not listed (operators, brackets, separators) is its own code.
enum TokenCode : int {
    TOKEN_SUBSCRIPT_ERROR = -15, ///< a subscript outside the cells; the same number as ERROR_VARIABLE
    TOKEN_LEXICAL_ERROR = -11,   ///< text that cannot be read; the same number as ERROR_SYNTAX
    TOKEN_COLON = -2,            ///< ":", the end of a statement
    TOKEN_END = -1,              ///< the end of the line; the scanner does not move past it
    TOKEN_UNKNOWN = 0,           ///< a control character, a word with an empty slot, what command mode ignores

    TOKEN_NUMBER = 1, ///< numeric literal, decimal or hexadecimal
    TOKEN_NUMVAR = 3, ///< numeric variable
    TOKEN_STRVAR = 5, ///< string variable
    TOKEN_STRING = 6, ///< string literal

    TOKEN_NE = 280,   ///< <> and !=
    TOKEN_GE = 281,   ///< >=
    TOKEN_LE = 282,   ///< <=
    TOKEN_EQEQ = 283, ///< ==

#define WORD(spelling, code, name) TOKEN_##name = code,
#define ALSO(spelling, name)
#include "core/vocabulary.def"
};

constexpr int FUNCTION_FIRST = TOKEN_SIN;    ///< the lowest code of a function
constexpr int FUNCTION_LAST = TOKEN_CUR;     ///< the highest code of a function
constexpr int STATEMENT_FIRST = TOKEN_INPUT; ///< the lowest code of a word that a statement begins with
constexpr int STATEMENT_LAST = TOKEN_GLOAD;  ///< the highest code of a statement word
constexpr int STATEMENT_WORD = TOKEN_BREAKA; ///< codes from here on are statement words, BREAK and BREAKA included

/// Whether a token is an operand by itself: a literal or a variable.
constexpr bool is_operand_token(int token) {
    return token == TOKEN_NUMBER || token == TOKEN_NUMVAR || token == TOKEN_STRVAR || token == TOKEN_STRING;
}

/// Whether a token ends a statement: ":" or the end of the line.
constexpr bool is_statement_end(int token) { return token == TOKEN_COLON || token == TOKEN_END; }

} // namespace quillon
