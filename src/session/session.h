// SPDX-License-Identifier: MIT
// A session: a simulator behind the one gate through which everything from outside reaches it. The gate remembers each
// input with its tick, so the session can be gone through again, from any of its moments, to the same end.
//
// Where the session has a future (after going back), ticks go through what came then; an input begins a new future, and
// only then the old one is dropped.
#pragma once

#include "session/log.h"
#include "shell/simulator.h"
#include "shell/window.h"

#include <memory>

namespace quillon {

/// How much of what the machine asks reaches the host.
enum class Hearing : std::uint8_t {
    LIVE,  ///< everything; answers are remembered
    AGAIN, ///< a past that is shown again: tones, messages and trace, but nothing is written, copied or opened
    QUIET, ///< nothing: on the way to a moment
};

/// Refers to its simulator and is referred to by its host: neither copied nor moved.
struct Session {
    explicit Session(Simulator& driven) : simulator(driven) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Simulator& simulator;
    SessionLog log;
    TickCount tick = 0;         ///< ticks made up to the present moment
    std::size_t next_entry = 0; ///< entries of the log that have been applied
    Hearing hearing = Hearing::LIVE;
    bool tone_plays = false;
    bool answers_missing =
        false; ///< the machine asked for what the log has no answer to: it is not that session's machine
    std::shared_ptr<const SkinInPlace> skin;
    std::unique_ptr<Machine> as_left; ///< in builds that check invariants: the record as the gate left it; null
                                      ///< where a test has put the machine into a state
    Host host;                        ///< the simulator's own, behind the gate
    Window window;
    Disk disk;
};

/// Begins a session with the simulator as it is. Its host, window and disk must be in place: from now on they are heard
/// through the gate. Called once.
void begin_session(Session& session);

/// Whether the present moment has a future.
inline bool has_future(const Session& session) {
    return session.tick < session.log.end || session.next_entry < session.log.entries.size();
}

/// Passes an input to the simulator and remembers it. Every change from outside comes this way. False for a listing
/// that was not loaded.
bool session_input(Session& session, Input input);

/// Drops the future of the present moment, if it has one.
void begin_new_future(Session& session);

/// Lets a dialog change settings in its own way, and remembers what it has changed.
void adjust_settings(Session& session, const std::function<void(Simulator&)>& change);

/// Begins a session with a simulator whose state has been read: opens the listing that is named or, without one, that
/// of the last run, and enters command mode or opens the soft keyboard where the settings say so. False when there is
/// no skin at all: then nothing is to be ticked.
bool start_session(Session& session, const std::string& listing);

/// One tick. Where there is a future, what came in then comes in again.
void session_tick(Session& session);

/// The same with the LCD drawn; returns whether its picture has changed.
bool session_tick_drawn(Session& session);

/// Goes to the moment right after a tick, or to the nearest that is remembered: back, or forward into the future.
/// Silent.
void go_to_tick(Session& session, TickCount tick);

/// What is gone through again on the way to a moment, silently and without drawing: the inputs of the present moment,
/// and a tick with them. Only where there is a future.
void apply_recorded_inputs(Session& session);
void tick_silently(Session& session);

/// The first moment that is remembered.
inline TickCount first_tick(const Session& session) { return session.log.snapshots.front().tick; }

/// The present moment as a value.
Moment present_moment(Session& session);

} // namespace quillon
