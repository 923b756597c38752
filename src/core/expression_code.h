// Expression code: expressions of the loaded text that deal with numbers only, as operations on a stack. The evaluator
// runs an expression's code in place of reading its text once more.
//
// Running code changes nothing until it has its number, and then leaves the record as evaluating the text would have.
// It gives up wherever an error or a string shows; then the text is evaluated, which reports. So code only has to know
// what happens when nothing goes wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillon {

struct Machine;
struct Token;

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
        CHECK_RANGE, ///< gives up where the number is none that a factor may have
    };
    Code code = NUMBER;
    std::int16_t argument = 0;
    double number = 0;
};

/// An expression of the loaded text, and what evaluating it leaves in the record.
struct Expression {
    std::uint32_t operations = 0; ///< index of the first one
    std::uint32_t operation_count = 0;
    std::uint32_t end_token = 0; ///< index of the token behind it
    int end_code = 0;            ///< code of that token
    int last_token = 0;          ///< code of its last token
    int nesting = 0;             ///< how deep it is nested
    int kind = 0;                ///< ValueKind of its first operand
    int first_cell = -1;         ///< cell of its first operand, -1 for none or one with a subscript
    int computed = 0;            ///< 0 when it is a single literal or variable
};

/// The expressions of the loaded text, translated when they are first evaluated. All memory is taken at the load; what
/// does not fit any more is evaluated from its text.
struct ExpressionCache {
    std::vector<std::uint32_t> expression_at; ///< for each token of the scan cache: 0 when not translated yet, else one
                                              ///< more than the index of the expression that begins there
    std::vector<Expression> expressions;
    std::vector<Operation> operations;
};

/// Makes room for a text of so many tokens and forgets all expressions.
void reset_expressions(ExpressionCache& cache, std::size_t token_count);

/// The code of the expression that begins with `token`, one of the scan cache's; null when there is none.
const Expression* find_expression(Machine& m, const Token& token);

/// Evaluates an expression by its code, with all that `eval_sum` leaves in the record. False when the code does not
/// serve this time: then nothing has changed. No error may be pending.
bool run_expression(Machine& m, const Expression& expression, double& result);

} // namespace quillon
