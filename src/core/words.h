// SPDX-License-Identifier: MIT
// Which words of the vocabulary do something: what the tables of handlers and those of the checker are held against
// when they are compiled. A word that gets a handler or loses it changes its list here.
#pragma once

#include "core/token.h"

#include <algorithm>
#include <iterator>

namespace quillon {

/// Words of the statement range that have no statement of their own: wherever one stands in the place of a statement
/// it is an unknown token. THEN, TO and STEP are read by IF and FOR.
constexpr TokenCode WORDS_WITHOUT_STATEMENT[] = {
    TOKEN_THEN, TOKEN_TO, TOKEN_STEP, TOKEN_LIST_ALL, TOKEN_CLEAR_ALL, TOKEN_SAVE_ALL, TOKEN_LOAD_ALL, TOKEN_DIM,
};

/// Words of the function range that are operators, which the evaluator takes between two operands.
constexpr TokenCode WORDS_WITHOUT_FUNCTION[] = {TOKEN_EX, TOKEN_EM};

/// Every word's code, in the order of the vocabulary.
constexpr TokenCode VOCABULARY_CODES[] = {
#define WORD(spelling, code, name) TOKEN_##name,
#define ALSO(spelling, name)
#include "core/vocabulary.def"
};

template <std::size_t N>
constexpr bool contains_code(const TokenCode (&codes)[N], TokenCode code) {
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

/// Whether the word with this code is a statement of its own, and whether it is a function.
constexpr bool is_statement_code(TokenCode code) {
    return code >= STATEMENT_FIRST && code <= STATEMENT_LAST && contains_code(VOCABULARY_CODES, code) &&
           !contains_code(WORDS_WITHOUT_STATEMENT, code);
}
constexpr bool is_function_code(TokenCode code) {
    return code >= FUNCTION_FIRST && code <= FUNCTION_LAST && contains_code(VOCABULARY_CODES, code) &&
           !contains_code(WORDS_WITHOUT_FUNCTION, code);
}

/// How many of some rows, each with a `token`, are for a code.
template <typename Rows>
constexpr std::ptrdiff_t rows_for(const Rows& rows, TokenCode code) {
    return std::count_if(std::begin(rows), std::end(rows), [code](const auto& row) { return row.token == code; });
}

/// Whether a table has one row for each statement and none for anything else.
template <typename Rows>
constexpr bool has_all_statements(const Rows& rows) {
    for (const TokenCode code : VOCABULARY_CODES) {
        if (rows_for(rows, code) != (is_statement_code(code) ? 1 : 0))
            return false;
    }
    return true;
}

/// The same of functions, which may be spread over two tables.
template <typename Rows, typename MoreRows>
constexpr bool has_all_functions(const Rows& rows, const MoreRows& more_rows) {
    for (const TokenCode code : VOCABULARY_CODES) {
        if (rows_for(rows, code) + rows_for(more_rows, code) != (is_function_code(code) ? 1 : 0))
            return false;
    }
    return true;
}

} // namespace quillon
