// SPDX-License-Identifier: MIT
// Reporting errors: one call writes the detail text for the person, the error text on the display line, and moves the
// machine to its error state. Texts come from the catalogue by section and number.
#pragma once

#include "core/states.h"
#include "core/token.h"

namespace quillon {

struct Machine;

/// A text of the catalogue: the section is "SYSTEM" or one per keyword.
struct MessageId {
    const char* section;
    int number;
};

// Texts of the interpreter itself (section SYSTEM).
constexpr MessageId MESSAGE_OUT_OF_MEMORY{"SYSTEM", 1};
constexpr MessageId MESSAGE_CANNOT_OPEN{"SYSTEM", 2};
constexpr MessageId MESSAGE_NO_LISTING{"SYSTEM", 3};
constexpr MessageId MESSAGE_NO_EDITOR{"SYSTEM", 10};
constexpr MessageId MESSAGE_UNKNOWN_TOKEN{"SYSTEM", 4};
constexpr MessageId MESSAGE_DIVISION_BY_ZERO{"SYSTEM", 5};
constexpr MessageId MESSAGE_NUMBER_RANGE{"SYSTEM", 6};
constexpr MessageId MESSAGE_BAD_NUMBER{"SYSTEM", 7};
constexpr MessageId MESSAGE_BAD_LINE_START{"SYSTEM", 20};
constexpr MessageId MESSAGE_HEADER_NOT_CLOSED{"SYSTEM", 21};
constexpr MessageId MESSAGE_AREA_TWICE{"SYSTEM", 22};
constexpr MessageId MESSAGE_TEXT_OUTSIDE_AREA{"SYSTEM", 23};
constexpr MessageId MESSAGE_NO_SUCH_AREA{"SYSTEM", 24};
constexpr MessageId MESSAGE_NO_BLANK_AFTER_NUMBER{"SYSTEM", 25};
constexpr MessageId MESSAGE_LINE_NUMBER_LENGTH{"SYSTEM", 26};
constexpr MessageId MESSAGE_LINE_NUMBER_ORDER{"SYSTEM", 27};
constexpr MessageId MESSAGE_UTF16{"SYSTEM", 28};
constexpr MessageId MESSAGE_CUT_BY_NUL{"SYSTEM", 29};
constexpr MessageId MESSAGE_NO_OPERAND{"SYSTEM", 30};
constexpr MessageId MESSAGE_NO_TARGET{"SYSTEM", 31};
constexpr MessageId MESSAGE_TYPES_DIFFER{"SYSTEM", 32};
constexpr MessageId MESSAGE_STRING_TO_NUMVAR{"SYSTEM", 33};
constexpr MessageId MESSAGE_NUMVAR_TO_STRVAR{"SYSTEM", 34};
constexpr MessageId MESSAGE_LITERAL_TO_NUMVAR{"SYSTEM", 35};
constexpr MessageId MESSAGE_NUMBER_TO_STRVAR{"SYSTEM", 36};
constexpr MessageId MESSAGE_TARGET_NUMBER{"SYSTEM", 37};
constexpr MessageId MESSAGE_TARGET_STRING{"SYSTEM", 38};
constexpr MessageId MESSAGE_STRING_OPERAND{"SYSTEM", 39};
constexpr MessageId MESSAGE_SUBSCRIPT{"SYSTEM", 40};
constexpr MessageId MESSAGE_STATEMENT_IN_PRINT{"SYSTEM", 50};
constexpr MessageId MESSAGE_TABLE_FULL{"SYSTEM", 70};
constexpr MessageId MESSAGE_DATA_SEPARATOR{"SYSTEM", 71};
constexpr MessageId MESSAGE_NO_DATA_INDEX{"SYSTEM", 72};

/// Raises an error: composes the detail as `compose_detail` does, shows the error text and enters the error state.
/// An error that is pending already stays: the first cause counts.
[[gnu::format(printf, 4, 5)]] void raise_error(Machine& m, ErrorCode code, MessageId message, const char* detail, ...);

/// The same without a detail behind the catalogue text.
void raise_error(Machine& m, ErrorCode code, MessageId message);

/// Composes `error_detail`: the catalogue text, directly followed by the formatted detail, and, except in command
/// mode, the location block (area, line, program text from the current token on). Raises nothing: for faults that the
/// program survives, and for those whose code is raised later.
[[gnu::format(printf, 3, 4)]] void compose_detail(Machine& m, MessageId message, const char* detail, ...);
void compose_detail(Machine& m, MessageId message);

/// Shows the error text of `code` and enters the error state; the detail has been composed already.
void enter_error(Machine& m, ErrorCode code);

/// Composes `system_message`, the text of a fault of the host or of a listing: catalogue text and formatted detail.
[[gnu::format(printf, 3, 4)]] void compose_system_message(Machine& m, MessageId message, const char* detail, ...);
void compose_system_message(Machine& m, MessageId message);

/// Reports the current token as unknown (ERR2).
void raise_unknown_token(Machine& m);

/// Reports a token that does not belong where it stands (ERR2); `message` is the statement's own.
void raise_token_error(Machine& m, MessageId message, TokenCode token);

/// The error that a faulty token stands for.
constexpr ErrorCode error_of(TokenCode fault) { return static_cast<ErrorCode>(fault); }

/// A token's code as details print it ("0x%04x").
constexpr unsigned token_id(TokenCode token) { return static_cast<unsigned>(static_cast<int>(token)); }

} // namespace quillon
