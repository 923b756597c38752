// SPDX-License-Identifier: MIT
// What the fast paths (core/fast_path) keep of a listing: expressions about numbers as operations on a stack, and where
// lines were found. It is derived from the tokens alone, so nothing of it shows.
#pragma once

#include "core/states.h"
#include "core/token.h"

#include <array>
#include <cstdint>
#include <vector>

namespace quillon {

/// One operation on the stack of numbers.
struct Operation {
    enum Code : std::int16_t {
        NUMBER,     ///< pushes `number`
        CELL,       ///< pushes the number of cell `argument`
        SUBSCRIPT,  ///< replaces a subscript by the number of the cell that it leads to from cell `argument`
        FIRST_CELL, ///< the same, of the variable that the expression begins with
        ADD,
        SUBTRACT,
        MULTIPLY,
        DIVIDE,
        POWER, ///< `argument` is the operator: "^", EX or EM
        NEGATE,
        FUNCTION,    ///< replaces a number by that of function `argument` (its token)
        CHECK_RANGE, ///< bails out where the number is outside the range of a factor
    };
    Code code = NUMBER;
    std::int16_t argument = 0;
    double number = 0;
};

/// An expression of the listing, and what evaluating it leaves in the record.
struct Expression {
    std::uint32_t operations = 0; ///< index of the first one
    std::uint32_t operation_count = 0;
    std::int32_t end_token = 0;      ///< index of the token after it
    TokenCode end_code = TOKEN_END;  ///< code of that token
    TokenCode last_code = TOKEN_END; ///< code of its own last token; a subscript belongs to its variable
    int nesting = 0;                 ///< how deep it is nested
    ValueKind kind = VALUE_NONE;     ///< of its first operand
    std::int16_t first_cell = -1;    ///< cell of its first operand, -1 for none or one with a subscript
    bool computed = false;           ///< more than a single literal or variable
};

/// Expressions are translated when they are first evaluated. All memory is taken by the load; those for which there is
/// no room are evaluated the plain way.
struct FastCode {
    bool enabled = true;                      ///< false: no fast path is taken
    std::vector<std::uint32_t> expression_at; ///< for each token: 0 when not translated yet, else one more than the
                                              ///< index of the expression that begins there
    std::vector<Expression> expressions;
    std::vector<Operation> operations;
    std::array<std::array<std::uint16_t, 64>, 10> found_lines{}; ///< by area and the low bits of a line's number:
                                                                 ///< a hint, looked at before it is believed
};

/// Makes room for the code of so many tokens.
void reserve_fast_code(FastCode& code, std::size_t token_count);

} // namespace quillon
