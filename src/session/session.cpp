// SPDX-License-Identifier: MIT
// Passing the gate, and going back and forth.
#include "session/session.h"

#include "core/fields.h"
#include "session/host_gate.h"
#include "shell/skins.h"
#include "shell/startup.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quillon {
namespace {

/// Sets how much is heard, until the end of a scope.
class Hear {
public:
    Hear(Session& session, Hearing hearing) : session_(session), before_(std::exchange(session.hearing, hearing)) {}
    ~Hear() { session_.hearing = before_; }
    Hear(const Hear&) = delete;
    Hear& operator=(const Hear&) = delete;

private:
    Session& session_;
    Hearing before_;
};

/// Applies what came in at the present tick. Answers are taken by the machine as it asks.
void apply_recorded(Session& session) {
    const auto& entries = session.log.entries;
    while (session.next_entry < entries.size() && entries[session.next_entry].tick == session.tick) {
        const Input input = entries[session.next_entry].input;
        if (is_answer(input))
            return;
        ++session.next_entry;
        apply_input(session.simulator, input);
    }
}

/// Answers that the machine did not ask for.
void skip_answers(Session& session) {
    const auto& entries = session.log.entries;
    while (session.next_entry < entries.size() && entries[session.next_entry].tick == session.tick) {
        session.answers_missing = true;
        ++session.next_entry;
    }
}

/// A tick that was made before, and is made again.
void tick_again(Session& session) {
    apply_recorded(session);
    advance_simulator(session.simulator);
    skip_answers(session);
    ++session.tick;
}

/// Marks what a person may look for later.
void mark_tick(Session& session, bool failed_before, RunState state_before) {
    const Machine& m = session.simulator.machine;
    if (failed(m) && !failed_before)
        add_mark(session.log, Mark::Kind::ERROR);
    else if (m.run.run_state == STATE_STOPPED && state_before != STATE_STOPPED)
        add_mark(session.log, Mark::Kind::STOP);
}

void tick_live(Session& session) {
    const Machine& m = session.simulator.machine;
    const bool failed_before = failed(m);
    const RunState state_before = m.run.run_state;
    advance_simulator(session.simulator);
    ++session.tick;
    session.log.end = session.tick;
    mark_tick(session, failed_before, state_before);
    if (wants_snapshot(session.log))
        add_snapshot(session.log, present_moment(session));
    session.next_entry = session.log.entries.size();
}

/// Whoever changes the record passes the gate: what it left is what it finds.
void require_untouched([[maybe_unused]] const Session& session) {
#ifdef QUILLON_CHECK_INVARIANTS
    if (!session.as_left || *session.as_left == session.simulator.machine)
        return;
    std::fprintf(stderr, "quillon: the record was changed without the session: %s\n",
                 record_difference(*session.as_left, session.simulator.machine).c_str());
    std::abort();
#endif
}

void note_untouched([[maybe_unused]] Session& session) {
#ifdef QUILLON_CHECK_INVARIANTS
    session.as_left = std::make_unique<Machine>(session.simulator.machine);
#endif
}

} // namespace

void begin_session(Session& session) {
    close_gate(session);
    begin_log(session.log, present_moment(session));
    session.tick = 0;
    session.next_entry = 0;
    note_untouched(session);
}

void begin_new_future(Session& session) {
    if (has_future(session))
        drop_future(session.log, session.tick, session.next_entry);
}

bool session_input(Session& session, Input input) {
    require_untouched(session);
    begin_new_future(session);
    if (input.verb == InputVerb::LOAD)
        add_mark(session.log, Mark::Kind::LOAD);
    add_entry(session.log, input);
    const bool done = apply_input(session.simulator, input);
    session.next_entry = session.log.entries.size();
    note_untouched(session);
    return done;
}

void adjust_settings(Session& session, const std::function<void(Simulator&)>& change) {
    require_untouched(session);
    Machine& m = session.simulator.machine;
    begin_new_future(session);
    std::vector<long long> before;
    for (const Field& field : fields())
        before.push_back(field.get(m));
    change(session.simulator);
    auto old = before.begin();
    for (const Field& field : fields()) {
        const long long number = field.get(m);
        if (number != *old++ && (field.uses & ADJUSTABLE) != 0)
            add_entry(session.log, {.verb = InputVerb::ADJUST, .numbers = {number}, .word = std::string(field.name)});
    }
    session.next_entry = session.log.entries.size();
    note_untouched(session);
}

bool start_session(Session& session, const std::string& listing) {
    Simulator& s = session.simulator;
    name_first_listing(s, listing);
    const bool usable = load_skin(s, {});
    begin_session(session);
    if (!s.preferences.last_file.empty())
        session_input(session, {.verb = InputVerb::LOAD, .text = s.preferences.last_file});
    if (s.preferences.start_mode == 1)
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_LINE}});
    if (s.preferences.soft_keyboard == 1)
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_SOFT_KEYBOARD}});
    render_lcd(s.lcd, s.machine);
    return usable;
}

void session_tick(Session& session) {
    require_untouched(session);
    if (session.tick < session.log.end) {
        const Hear again(session, Hearing::AGAIN);
        tick_again(session);
    } else {
        if (has_future(session)) {
            const Hear again(session, Hearing::AGAIN);
            apply_recorded(session);
        }
        tick_live(session);
    }
    note_untouched(session);
}

bool session_tick_drawn(Session& session) {
    session_tick(session);
    return render_lcd(session.simulator.lcd, session.simulator.machine);
}

void go_to_tick(Session& session, TickCount tick) {
    require_untouched(session);
    const Hear quiet(session, Hearing::QUIET);
    tick = std::clamp(tick, first_tick(session), session.log.end);
    const Snapshot& from = snapshot_before(session.log, tick);
    const bool is_ahead =
        session.tick < tick || (session.tick == tick && session.next_entry == first_entry_at(session.log, tick));
    if (!is_ahead || session.tick < from.tick) {
        restore_moment(session.simulator, *from.moment);
        session.skin = from.moment->skin;
        session.tone_plays = from.moment->tone_plays;
        session.tick = from.tick;
        session.next_entry = from.entry;
    }
    while (session.tick < tick)
        tick_again(session);
    render_lcd(session.simulator.lcd, session.simulator.machine);
    note_untouched(session);
}

void apply_recorded_inputs(Session& session) {
    const Hear quiet(session, Hearing::QUIET);
    apply_recorded(session);
    note_untouched(session);
}

void tick_silently(Session& session) {
    const Hear quiet(session, Hearing::QUIET);
    tick_again(session);
    note_untouched(session);
}

Moment present_moment(Session& session) {
    Moment moment = take_moment(session.simulator, session.tone_plays, session.skin);
    session.skin = moment.skin;
    return moment;
}

} // namespace quillon
