// SPDX-License-Identifier: MIT
// How the language's words are tied to the operations that carry them out. The tables themselves are in the driver,
// above the folders that hold the operations, so that the evaluator can call them without knowing them.
#pragma once

#include "core/states.h"
#include "core/token.h"

#include <array>
#include <optional>

namespace quillon {

struct Machine;

/// Carries out a statement from the token after its word on. Leaves `token` at the separator that ends the statement,
/// or moves the position itself (jumps); reports through the record.
using StatementHandler = void (*)(Machine&);

/// Reads a function's arguments and leaves its result in `value`; returns the number, 0 for a string. Leaves `token`
/// after the arguments.
using FunctionHandler = double (*)(Machine&);

/// Computes a function of one number without touching the record: `x` becomes its result. False where the function
/// refuses the argument.
using NumberFormula = bool (*)(const Machine&, TokenCode token, double& x);

/// One statement word. `kind` is the statement context that the word sets before its handler runs, if any. PRINT and
/// INPUT only set theirs: their handler is called by `eval_statement` and by the driver, once for each item of their
/// list.
struct Statement {
    StatementHandler handler = nullptr;
    std::optional<StmtKind> kind;
};

/// The handlers of all words, by token code. A word without a handler is an unknown token.
struct Language {
    std::array<Statement, STATEMENT_COUNT> statements{};
    std::array<FunctionHandler, FUNCTION_COUNT> functions{};
    std::array<NumberFormula, FUNCTION_COUNT> formulas{}; ///< of the functions of one factor
};

/// The statement of a token, without a handler when it has none.
constexpr Statement statement_of(const Language& language, TokenCode token) {
    const bool known = token >= STATEMENT_FIRST && token <= STATEMENT_LAST;
    return known ? language.statements[token_distance(STATEMENT_FIRST, token)] : Statement{};
}

/// The function of a token, null when it has none.
constexpr FunctionHandler function_of(const Language& language, TokenCode token) {
    const bool known = token >= FUNCTION_FIRST && token <= FUNCTION_LAST;
    return known ? language.functions[token_distance(FUNCTION_FIRST, token)] : nullptr;
}

/// The formula of a function of one factor, null for all other tokens.
constexpr NumberFormula formula_of(const Language& language, TokenCode token) {
    const bool known = token >= FUNCTION_FIRST && token <= FUNCTION_LAST;
    return known ? language.formulas[token_distance(FUNCTION_FIRST, token)] : nullptr;
}

} // namespace quillon
