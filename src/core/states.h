// SPDX-License-Identifier: MIT
// The small codes of the machine: run states, statement contexts, operand kinds, error codes and key codes.
// Scripts that drive the machine and saved files see their numbers, so the numbers never change.
#pragma once

#include <cstdint>

namespace quillon {

/// What the machine is doing; `machine_tick` serves one of these.
enum class RunState : std::int8_t {
    STATE_RUN = 0,           ///< executes the program, or serves a wait named by the statement context
    STATE_PRINT_WAIT = 1,    ///< output shown; EXE goes on
    STATE_INPUT = 2,         ///< entry of a value for INPUT
    STATE_STOPPED = 3,       ///< halted by STOP; EXE goes on
    STATE_ENDED = 4,         ///< halted for good; the clear key leads to command mode
    STATE_SELECT = 5,        ///< selection of a program area
    STATE_COMMAND = 6,       ///< command mode: entry of a command line
    STATE_COMMAND_ERROR = 7, ///< an error of a command line is shown
    STATE_LINE_SHOWN = 8,    ///< stopped, and the position is shown
    STATE_TO_COMMAND = 9,    ///< passes to command mode on the next tick
};
using enum RunState;

/// The context that the current statement set, or the wait that the tick serves.
enum class StmtKind : std::int8_t {
    KIND_NONE = 0,
    KIND_CONDITION = 3,     ///< in an IF condition: "=" compares, ";" and THEN may follow
    KIND_JUMP = 4,          ///< in a jump: "#" may follow
    KIND_PRINT = 7,         ///< a PRINT list is under way
    KIND_FOR = 8,           ///< in a FOR
    KIND_INPUT = 9,         ///< an INPUT list is under way
    KIND_SCROLL = 10,       ///< a long text of PRINT is scrolling in
    KIND_PROMPT = 11,       ///< the prompt of INPUT waits for the first key
    KIND_INPUT_ERROR = 14,  ///< an entry was refused; any key leads to the prompt
    KIND_PROMPT_AGAIN = 15, ///< the prompt is to be shown again
    KIND_CLEARED = 16,      ///< the clear key led to command mode
    KIND_RESULT = 17,       ///< a result or READY is shown
};
using enum StmtKind;

/// What an operand is (`Value::kind`).
enum class ValueKind : std::int16_t {
    VALUE_NONE = 0,     ///< no operand
    VALUE_NUMBER = 1,   ///< literal or computed number
    VALUE_NUMVAR = 3,   ///< a cell read as a number
    VALUE_STRVAR = 5,   ///< a cell read as a string
    VALUE_STRING = 6,   ///< literal or computed string
    VALUE_CURSOR = 270, ///< a CSR item of PRINT: it moved the column and prints nothing
};
using enum ValueKind;

/// What a variable cell holds.
enum class CellKind : std::int8_t {
    CELL_UNASSIGNED = -1, ///< never assigned: reads as the number 0 and as the empty string
    CELL_NUMBER = 0,
    CELL_STRING = 1,
};
using enum CellKind;

/// What a value counts as (`value_type`).
enum class ValueType : std::int8_t { TYPE_NONE = -1, TYPE_NUMBER = 0, TYPE_STRING = 1 };
using enum ValueType;

/// Errors. ERRn on the display is -code - 9, for the codes that have a number.
enum class ErrorCode : std::int8_t {
    ERROR_NONE = 0,
    ERROR_INPUT = -7,       ///< an INPUT entry that is not acceptable; the machine asks again
    ERROR_SYNTAX = -11,     ///< ERR2
    ERROR_ARITHMETIC = -12, ///< ERR3
    ERROR_LINE = -13,       ///< ERR4: no such line, no DATA left
    ERROR_RANGE = -14,      ///< ERR5
    ERROR_VARIABLE = -15,   ///< ERR6
    ERROR_NESTING = -16,    ///< ERR7
};
using enum ErrorCode;

/// Key codes in `key_string` besides characters.
enum class MachineKey : char {
    KEY_NONE = 0,
    KEY_LEFT = 1,
    KEY_RIGHT = 2,
    KEY_DELETE = 3,
    KEY_BACKSPACE = 4,
    KEY_INSERT = 5,
    KEY_CLEAR = 6,
    KEY_ANSWER = 7, ///< types the last result
    KEY_UP = 8,
    KEY_DOWN = 9,
    KEY_PASTE = 10,
    KEY_COPY = 11,
};
using enum MachineKey;

/// Angle units, as MODE 4, 5 and 6 select them.
enum class AngleUnit : std::int8_t { ANGLE_DEG = 0, ANGLE_RAD = 1, ANGLE_GRA = 2 };
using enum AngleUnit;

/// The number of a code, as scripts, saved files and texts have it.
template <typename Code>
constexpr int number_of(Code code) {
    return static_cast<int>(code);
}

} // namespace quillon
