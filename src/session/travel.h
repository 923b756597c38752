// SPDX-License-Identifier: MIT
// Going through a session until something happens, forwards and backwards: to a watch, an error or a wait, by
// statements, over subroutines and out of them.
#pragma once

#include "session/session.h"
#include "session/watches.h"

namespace quillon {

/// What a session is watched for, and what reports it.
struct Debugger {
    std::vector<Watch> watches;
    int last_id = 0;
    std::function<void(const std::string&)> log_message = [](const std::string&) {}; ///< of watches that do not stop
};

/// Adds a watch and returns its number, from 1. One on a line that is not there moves to the next line; 0 when the area
/// has none.
int add_watch(Debugger& debugger, const Machine& m, Watch watch);

/// Takes a watch away; false when there is none with this number.
bool remove_watch(Debugger& debugger, int id);

/// How a journey went.
struct Journey {
    TickCount ticks = 0; ///< forwards or backwards
    Stop stop{};
};

/// Is called after each tick of a journey forwards.
using AfterTick = std::function<void()>;

/// Ticks, at most so many, until a watch is met, an error is raised, the machine waits for a person, or the program has
/// ended. At least one tick when the machine can make one.
Journey run_on_until_stop(
    Session& session, Debugger& debugger, TickCount most, const AfterTick& after_tick = [] {});

/// The same backwards, to the moment before: the last one of the past that a stop followed.
Journey run_back_until_stop(Session& session, Debugger& debugger, TickCount most);

/// Single statements. Forwards until the next one begins, or something stops the program before.
enum class StepKind : std::uint8_t {
    INTO, ///< the next statement
    OVER, ///< a GOSUB counts as one statement
    OUT,  ///< until after the RETURN
};
Journey step_forward(
    Session& session, Debugger& debugger, StepKind kind, TickCount most, const AfterTick& after_tick = [] {});

/// To before the first statement of a line, forwards or backwards, unless something stops the program before.
Journey run_to_line(
    Session& session, Debugger& debugger, int area, int line, TickCount most, const AfterTick& after_tick = [] {});
Journey run_back_to_line(Session& session, int area, int line);

/// Back to before the statement that was executed last, the last one at this depth, or the GOSUB that led here.
Journey step_backward(Session& session, StepKind kind);

/// Back to before the last tick that changed a cell, or that raised an error; nothing when there is none.
std::optional<Journey> back_to_change(Session& session, CellIndex cell);
std::optional<Journey> back_to_error(Session& session);

} // namespace quillon
