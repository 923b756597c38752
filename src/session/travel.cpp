// SPDX-License-Identifier: MIT
// Journeys: forwards tick by tick, backwards by running again from snapshot to snapshot and keeping the last hit.
#include "session/travel.h"

#include <algorithm>

namespace quillon {
namespace {

bool has_ended(const Machine& m) {
    return m.run.run_state == STATE_ENDED || m.run.run_state == STATE_SELECT ||
           (m.run.run_state == STATE_COMMAND && m.run.base_state != STATE_RUN);
}

/// What stops a program besides watches: an error, a wait, its end.
/// A wait that nothing recorded will end stops at once.
std::optional<Stop> natural_stop(const Session& session, const BeforeTick& before) {
    const Machine& m = session.simulator.machine;
    if (failed(m) && !before.failed)
        return Stop{.reason = StopReason::ERROR};
    if (waits_for_person(m) && (!before.waited || !has_future(session)))
        return Stop{.reason = has_ended(m) ? StopReason::ENDED : StopReason::WAITS};
    return std::nullopt;
}

using StopTest = std::function<std::optional<Stop>(const Machine& m, const BeforeTick& before)>;

/// Forwards until a test stops the journey.
Journey go_on(Session& session, const std::vector<Watch>& watches, TickCount most, const AfterTick& after_tick,
              const StopTest& test) {
    const Machine& m = session.simulator.machine;
    Journey journey;
    BeforeTick before;
    while (journey.ticks < most) {
        note_before_tick(m, watches, before);
        session_tick(session);
        after_tick();
        ++journey.ticks;
        if (auto stop = test(m, before)) {
            journey.stop = *stop;
            break;
        }
    }
    render_lcd(session.simulator.lcd, session.simulator.machine);
    return journey;
}

/// A test of the past: the moment to go to when the tick into `m` is what is looked for.
struct Found {
    TickCount tick = 0;
    Stop stop;
};
using PastTest = std::function<std::optional<Found>(const Machine& m, const BeforeTick& before, TickCount tick)>;

/// Runs a part of the past again, from a snapshot up to a tick, and returns the last find before `end`.
std::optional<Found> last_in_part(Session& session, const std::vector<Watch>& watches, TickCount from, TickCount to,
                                  const PastTest& test) {
    std::optional<Found> last;
    go_to_tick(session, from);
    const Machine& m = session.simulator.machine;
    BeforeTick before;
    while (session.tick < to) {
        apply_recorded_inputs(session);
        note_before_tick(m, watches, before);
        tick_silently(session);
        if (auto found = test(m, before, session.tick))
            last = found;
    }
    return last;
}

/// The last find that lies before the present moment and not before `earliest`.
std::optional<Found> last_in_past(Session& session, const std::vector<Watch>& watches, TickCount earliest,
                                  const PastTest& test) {
    TickCount to = session.tick;
    while (to > earliest) {
        const TickCount from = std::max(snapshot_before(session.log, to - 1).tick, earliest);
        if (const auto found = last_in_part(session, watches, from, to, test))
            return found;
        to = from;
    }
    return std::nullopt;
}

/// Goes back to what was found, or to the earliest moment.
Journey end_journey(Session& session, TickCount present, TickCount earliest, const std::optional<Found>& found) {
    const TickCount target = found ? found->tick : earliest;
    go_to_tick(session, target);
    Journey journey{.ticks = present - target};
    if (found)
        journey.stop = found->stop;
    else
        journey.stop.reason = earliest == first_tick(session) ? StopReason::START : StopReason::LIMIT;
    return journey;
}

TickCount earliest_tick(const Session& session, TickCount most) {
    const TickCount room = session.tick - first_tick(session);
    return session.tick - std::min(most, room);
}

} // namespace

int add_watch(Debugger& debugger, const Machine& m, Watch watch) {
    if (watch.kind == Watch::Kind::LINE) {
        const auto line = line_to_stop_at(m, watch.area, watch.line);
        if (!line)
            return 0;
        watch.line = *line;
    }
    watch.id = ++debugger.last_id;
    debugger.watches.push_back(std::move(watch));
    return debugger.last_id;
}

bool remove_watch(Debugger& debugger, int id) {
    return std::erase_if(debugger.watches, [id](const Watch& watch) { return watch.id == id; }) > 0;
}

Journey run_on_until_stop(Session& session, Debugger& debugger, TickCount most, const AfterTick& after_tick) {
    return go_on(session, debugger.watches, most, after_tick, [&](const Machine& m, const BeforeTick& before) {
        auto stop = watch_met(m, before, debugger.watches, debugger.log_message, true);
        return stop ? stop : natural_stop(session, before);
    });
}

Journey run_back_until_stop(Session& session, Debugger& debugger, TickCount most) {
    const TickCount present = session.tick;
    const TickCount earliest = earliest_tick(session, most);
    const auto test = [&](const Machine& m, const BeforeTick& before, TickCount tick) -> std::optional<Found> {
        auto stop = watch_met(m, before, debugger.watches, debugger.log_message, false);
        if (stop && stop->reason == StopReason::BREAKPOINT) // it stops before the statement: right here
            return tick < present ? std::optional(Found{tick, *stop}) : std::nullopt;
        if (!stop)
            stop = natural_stop(session, before);
        return stop ? std::optional(Found{tick - 1, *stop}) : std::nullopt;
    };
    const auto found = last_in_past(session, debugger.watches, earliest, test);
    return end_journey(session, present, earliest, found);
}

Journey step_forward(Session& session, Debugger& debugger, StepKind kind, TickCount most, const AfterTick& after_tick) {
    const int depth = session.simulator.machine.program.gosub_depth;
    return go_on(session, debugger.watches, most, after_tick, [&](const Machine& m, const BeforeTick& before) {
        auto stop = watch_met(m, before, debugger.watches, debugger.log_message, true);
        if (!stop)
            stop = natural_stop(session, before);
        const int deepest = kind == StepKind::OUT ? depth - 1 : depth;
        const bool there = kind == StepKind::INTO || m.program.gosub_depth <= deepest;
        if (!stop && is_at_statement(m) && there)
            stop = Stop{.reason = StopReason::STEP};
        return stop;
    });
}

Journey run_to_line(Session& session, Debugger& debugger, int area, int line, TickCount most,
                    const AfterTick& after_tick) {
    std::vector<Watch> target{{.kind = Watch::Kind::LINE, .area = area, .line = line}};
    return go_on(session, debugger.watches, most, after_tick, [&](const Machine& m, const BeforeTick& before) {
        auto stop = watch_met(m, before, debugger.watches, debugger.log_message, true);
        if (!stop && watch_met(m, before, target, {}, false))
            stop = Stop{.reason = StopReason::STEP};
        return stop ? stop : natural_stop(session, before);
    });
}

Journey run_back_to_line(Session& session, int area, int line) {
    std::vector<Watch> target{{.kind = Watch::Kind::LINE, .area = area, .line = line}};
    const TickCount present = session.tick;
    const auto test = [&](const Machine& m, const BeforeTick& before, TickCount tick) -> std::optional<Found> {
        if (tick == present || !watch_met(m, before, target, {}, false))
            return std::nullopt;
        return Found{tick, Stop{.reason = StopReason::STEP}};
    };
    const auto found = last_in_past(session, target, first_tick(session), test);
    return end_journey(session, present, first_tick(session), found);
}

Journey step_backward(Session& session, StepKind kind) {
    const TickCount present = session.tick;
    const int depth = session.simulator.machine.program.gosub_depth;
    const auto test = [&](const Machine&, const BeforeTick& before, TickCount tick) -> std::optional<Found> {
        const int deepest = kind == StepKind::OUT ? depth - 1 : depth;
        if (!before.runs_statement || (kind != StepKind::INTO && before.gosub_depth > deepest))
            return std::nullopt;
        return Found{tick - 1, Stop{.reason = StopReason::STEP}};
    };
    const auto found = last_in_past(session, {}, first_tick(session), test);
    return end_journey(session, present, first_tick(session), found);
}

std::optional<Journey> back_to_change(Session& session, CellIndex cell) {
    Debugger debugger;
    debugger.watches.push_back({.kind = Watch::Kind::CELL, .cell = cell});
    const TickCount present = session.tick;
    const auto found = last_in_past(session, debugger.watches, first_tick(session),
                                    [&](const Machine& m, const BeforeTick& before, TickCount tick) {
                                        auto stop = watch_met(m, before, debugger.watches, {}, false);
                                        return stop ? std::optional(Found{tick - 1, *stop}) : std::nullopt;
                                    });
    if (found)
        return end_journey(session, present, first_tick(session), found);
    go_to_tick(session, present);
    return std::nullopt;
}

std::optional<Journey> back_to_error(Session& session) {
    const TickCount present = session.tick;
    const auto found =
        last_in_past(session, {}, first_tick(session), [](const Machine& m, const BeforeTick& before, TickCount tick) {
            const bool raised = failed(m) && !before.failed;
            return raised ? std::optional(Found{tick - 1, {.reason = StopReason::ERROR}}) : std::nullopt;
        });
    if (found)
        return end_journey(session, present, first_tick(session), found);
    go_to_tick(session, present);
    return std::nullopt;
}

} // namespace quillon
