// SPDX-License-Identifier: MIT
// The debugger's journeys, and what it watches while the clock ticks.
#include "desktop/debug_control.h"

#include "core/charset.h"
#include "session/cell_text.h"

#include <algorithm>

namespace quillon {
namespace {

/// A step that takes longer stops on the way: the window must not wait for a program that runs for ever.
constexpr TickCount STEP_TICKS_MAX = 1'000'000;

} // namespace

DebugControl::DebugControl(Session& session_, QObject* parent) : QObject(parent), session(session_) {
    debugger.log_message = [this](const std::string& text) { emit logged(QString::fromStdString(to_unicode(text))); };
}

bool DebugControl::tick() {
    if (debugger.watches.empty())
        return session_tick_drawn(session);
    const Machine& m = session.simulator.machine;
    note_before_tick(m, debugger.watches, before);
    const bool changed = session_tick_drawn(session);
    if (const auto met = watch_met(m, before, debugger.watches, debugger.log_message, true))
        stand(*met);
    return changed;
}

void DebugControl::stand(const Stop& why) {
    standing = true;
    stop = why;
    if (session.tone_plays)
        session.host.stop_tone();
    emit moved();
}

void DebugControl::go_on() {
    standing = false;
    emit moved();
}

void DebugControl::arrive(const Journey& journey) { stand(journey.stop); }

void DebugControl::go_back() { arrive(run_back_until_stop(session, debugger, session.tick)); }

void DebugControl::step(StepKind kind, bool backward) {
    arrive(backward ? step_backward(session, kind) : step_forward(session, debugger, kind, STEP_TICKS_MAX));
}

void DebugControl::go_to(TickCount tick) {
    go_to_tick(session, tick);
    stand({.reason = StopReason::STEP});
}

void DebugControl::go_on_from_here() {
    begin_new_future(session);
    go_on();
}

void DebugControl::go_to_line(int area, int line, bool backward) {
    arrive(backward ? run_back_to_line(session, area, line)
                    : run_to_line(session, debugger, area, line, STEP_TICKS_MAX));
}

bool DebugControl::go_back_to_change(CellIndex cell) {
    const auto journey = back_to_change(session, cell);
    if (journey)
        arrive(*journey);
    return journey.has_value();
}

void DebugControl::toggle_breakpoint(int area, int line) {
    const auto is_there = [=](const Watch& watch) {
        return watch.kind == Watch::Kind::LINE && watch.area == area && watch.line == line;
    };
    if (std::erase_if(debugger.watches, is_there) == 0)
        add_watch(debugger, session.simulator.machine, {.kind = Watch::Kind::LINE, .area = area, .line = line});
    emit watches_changed();
}

bool DebugControl::put_watch(Watch& watch, int replaced) {
    const int id = add_watch(debugger, session.simulator.machine, watch);
    if (id == 0)
        return false;
    watch = debugger.watches.back();
    remove_watch(debugger, replaced);
    emit watches_changed();
    return true;
}

void DebugControl::take_watch_away(int id) {
    remove_watch(debugger, id);
    emit watches_changed();
}

bool DebugControl::change_cell(CellIndex cell, const std::string& text) {
    if (!parse_cell(text))
        return false;
    session_input(session, {.verb = InputVerb::CELL, .word = cell_path(cell), .text = text});
    emit moved();
    return true;
}

} // namespace quillon
