// SPDX-License-Identifier: MIT
// From a word to its row, its arguments and its result.
#include "functions/list_functions.h"

#include "core/errors.h"
#include "core/machine.h"
#include "functions/function_table.h"

namespace quillon {
namespace {

/// The rows by token; only those of the functions with lists are looked at.
constexpr auto ROWS = [] {
    std::array<std::uint8_t, FUNCTION_COUNT> rows{};
    for (std::size_t row = 0; row < std::size(LIST_FUNCTIONS); ++row)
        rows[token_distance(FUNCTION_FIRST, LIST_FUNCTIONS[row].token)] = static_cast<std::uint8_t>(row);
    return rows;
}();

} // namespace

double list_function(Machine& m) {
    const ListFunction& function = LIST_FUNCTIONS[ROWS[token_distance(FUNCTION_FIRST, m.eval.token)]];
    Arguments arguments;
    if (!read_arguments(m, function.signature, arguments))
        return 0;
    const double result = function.formula(m, arguments);
    pass_closing(m, function.signature);
    return result;
}

} // namespace quillon
