// SPDX-License-Identifier: MIT
// Breakpoints and watchpoints: what a session is to stop at. They look at the machine between ticks and change nothing
// in it; a session without any does not look.
#pragma once

#include "core/machine.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

struct Watch {
    enum class Kind : std::uint8_t {
        LINE,    ///< before the first statement of a line, each time it is entered
        CELL,    ///< after the tick that changed a variable cell
        DISPLAY, ///< after the tick that brought a text to the display
        ERROR,   ///< after the tick that raised an error
    };
    Kind kind = Kind::LINE;
    int id = 0;              ///< given when it is added
    int area = 0;            ///< of LINE
    int line = 0;            ///< of LINE: its number
    CellIndex cell = 0;      ///< of CELL
    std::string text{};      ///< of DISPLAY: machine text that the twelve columns contain
    std::string condition{}; ///< an expression of the language; empty for always
    int hits_wanted = 1;     ///< stops when it is met for the so-manieth time, and each time from then on
    int hits = 0;            ///< times it was met, since the present future began
    std::string
        message{}; ///< is logged instead of stopping, when not empty; `{A}` stands for the value of an expression
};

/// Why a session stands still.
enum class StopReason : std::uint8_t { BREAKPOINT, WATCHPOINT, ERROR, WAITS, ENDED, LIMIT, START, STEP };

/// The word for it in answers: "breakpoint", "watchpoint", "error", "waits", "ended", "limit", "start", "step".
std::string_view stop_reason_word(StopReason reason);

struct Stop {
    StopReason reason = StopReason::LIMIT;
    int id = 0;            ///< of the watch
    std::string problem{}; ///< what is wrong with its condition; empty when nothing is
};

/// What of the moment before a tick decides whether the tick met a watch.
struct BeforeTick {
    bool runs_statement = false;    ///< the tick executes a statement, and does not just wait
    TokenIndex statement = NOWHERE; ///< the one that is next
    int gosub_depth = 0;
    bool failed = false;
    bool waited = false;
    std::array<char, DISPLAY_WIDTH> shown{};
    std::vector<Variable> cells; ///< of the watches of cells, in their order
};

/// The next line of an area that a breakpoint on `line` stops at; nothing when the area has none from there on.
std::optional<int> line_to_stop_at(const Machine& m, int area, int line);

/// Whether the next tick begins a statement of a program.
bool is_at_statement(const Machine& m);

/// Whether it does, and nothing holds it up: no tone, no single step that has not been asked for.
bool runs_statement_next(const Machine& m);

/// Notes the moment before a tick. `before` is used again from tick to tick, so that nothing is allocated.
void note_before_tick(const Machine& m, const std::vector<Watch>& watches, BeforeTick& before);

/// The first watch that the tick just made has met; nothing when none was. With `count`, counts the hits and logs
/// messages.
std::optional<Stop> watch_met(const Machine& m, const BeforeTick& before, std::vector<Watch>& watches,
                              const std::function<void(const std::string&)>& log_message, bool count);

/// Evaluates an expression of the language on a copy of the machine: nothing of it shows. Nothing, with a sentence in
/// `problem`, for what is not one expression or fails.
std::optional<Value> evaluate_on_copy(const Machine& m, std::string_view expression, std::string& problem);

} // namespace quillon
