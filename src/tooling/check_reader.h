// SPDX-License-Identifier: MIT
// Reading a statement as the machine would, without values: it goes the way of the evaluator token by token and knows
// of each operand what can be known from the text.
#pragma once

#include "core/scanner.h"
#include "core/signature.h"
#include "core/states.h"
#include "tooling/check_listing.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quillon {

/// What is known of an operand. Names follow the machine's own record of it.
struct CheckedOperand {
    ValueKind kind = VALUE_NONE;         ///< of a computed result, the kind of its first operand
    bool complete = false;               ///< computed, so nothing can be assigned to it
    bool numeric = false;                ///< a computed number, whatever the cell of its first operand held
    bool dollar = false;                 ///< the variable $
    std::optional<double> number{};      ///< the number, where the text tells it
    std::optional<std::size_t> length{}; ///< of a string, likewise
    std::optional<std::string> text{};   ///< of a string literal alone
    const char* at = nullptr;            ///< where it begins
};

/// What an operand counts as; a variable without "$" may hold either.
enum class OperandType { NONE, NUMBER, STRING, EITHER };
OperandType type_of(const CheckedOperand& operand);

/// Whether an operand is a string, for certain.
bool is_string(const CheckedOperand& operand);

/// Whether an operand is a number, as far as the text tells.
bool may_be_number(const CheckedOperand& operand);

/// The statement being read.
struct StatementReader {
    CheckedListing& listing;
    int area = 0;
    int line = 0;
    const char* scan = nullptr;
    Token scanned{};               ///< the token read last, as the scanner gave it
    TokenCode token = TOKEN_COLON; ///< its code, or what a statement left in its place
    TokenCode prev_token = TOKEN_COLON;
    StmtKind kind = KIND_NONE;
    CheckedOperand value{};
    int depth = 0;
    bool at_start = true;  ///< nothing of the statement has been read, or signs only
    bool may_lack = false; ///< the operand that comes may be missing: a statement in its place is carried out
    bool failed = false;
    bool assigned = false;    ///< there was an assignment
    bool rest_taken = false;  ///< the token behind the statement is passed over
    bool conditional = false; ///< an IF stands before on the line
    bool leaves_line = false; ///< nothing behind the statement is ever reached
    bool skips_line = false;  ///< the statement may leave out the rest of the line
};

/// Reports an error at a place and ends the statement, unless it has ended already. Where the token that stands there
/// cannot be read, that is the error.
void refuse(StatementReader& r, FindingKind kind, const char* at, std::string text);

/// Reports a warning at a place.
void warn(StatementReader& r, FindingKind kind, const char* at, std::string text);

/// Reports the current token as one that cannot stand where it does.
void refuse_token(StatementReader& r);

/// Notes a step of the program.
void add_step(StatementReader& r, Step::Kind kind, int value, const char* at);

/// Reads the next token; `next_behind_operand` leaves `value` as it is.
void next(StatementReader& r);
void next_behind_operand(StatementReader& r);

/// Reads an expression, one factor, or a statement with its assignment or relation.
void read_sum(StatementReader& r);
void read_factor(StatementReader& r);
void read_statement(StatementReader& r);

/// Reads an expression as an argument: `value.kind` is VALUE_NONE afterwards when there was none.
void read_argument(StatementReader& r);

/// Enters a nested level; false, with an error, where nesting is too deep. To be left with `--r.depth`.
bool descend(StatementReader& r);

/// Reads the arguments of a function whose word is the current token. False when it is no function.
bool read_function(StatementReader& r);

/// Reads the arguments of a word by its signature, up to a ")"; `r.value` is the last one.
void read_by_signature(StatementReader& r, const Signature& signature);

/// Reads a statement from the token behind its word on.
void read_statement_word(StatementReader& r);

/// Jumps and conditions, from the token behind their words on.
void read_goto(StatementReader& r);
void read_gosub(StatementReader& r);
void read_return(StatementReader& r);
void read_on(StatementReader& r);
void read_if(StatementReader& r);

/// A line number as the text tells it, `r.value`, that a jump from `at` leads to.
void note_line(StatementReader& r, const char* at);

/// Nothing behind this statement is ever reached; its last token is the one behind it.
void leave_line(StatementReader& r);

/// Reports what stands in the place of something else.
void refuse_shape(StatementReader& r, const char* text);

/// The lists of PRINT and INPUT.
void read_print_list(StatementReader& r);
void read_input_list(StatementReader& r);

/// What a token is called in a report.
std::string describe(const Token& token);

} // namespace quillon
