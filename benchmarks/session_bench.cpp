// SPDX-License-Identifier: MIT
// How fast a long session is gone through: back to its start, its middle and the tick before the last one, and back
// over a day at the machine to a breakpoint and to a watched cell. The counters tell its ticks and the log's memory.
#include "session/travel.h"

#include <benchmark/benchmark.h>

namespace quillon {
namespace {

constexpr TickCount LONG_SESSION = 10'000'000;
constexpr TickCount DAY = 3'000'000; ///< at the machine's own 35 ticks a second

/// B changes and line 15 runs once, at the beginning; then the program counts for ever, with a key now and then.
constexpr const char* LISTING = "[P0]\n10 B=1\n15 B=2\n20 A=A+1:$=KEY$:GOSUB 40\n30 GOTO 20\n40 C=A/7:RETURN\n";
constexpr TickCount TICKS_PER_KEY = 500;

struct LongSession {
    explicit LongSession(TickCount ticks) : session(simulator) {
        simulator.disk.read_file = [](const std::string&, std::size_t, FileKind) {
            return FileContents{ReadStatus::READ, LISTING};
        };
        begin_session(session);
        session_input(session, {.verb = InputVerb::LOAD, .text = "count.bas"});
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_RUN}});
        for (TickCount tick = 0; tick < ticks; ++tick) {
            if (tick % TICKS_PER_KEY == 0)
                session_input(session, {.verb = InputVerb::CHARACTER, .text = "Q"});
            session_tick(session);
        }
    }

    Simulator simulator;
    Session session;
};

void report(benchmark::State& state, const Session& session) {
    state.counters["ticks"] = static_cast<double>(session.log.end);
    state.counters["log_KiB"] = static_cast<double>(log_bytes(session.log)) / 1024;
}

/// To a moment so many parts of a hundred from the start, and from there to the end again, which is not timed.
void go_to_part(benchmark::State& state) {
    LongSession played(LONG_SESSION);
    Session& session = played.session;
    const TickCount first = first_tick(session);
    const TickCount span = session.log.end - first;
    const TickCount goal =
        state.range(0) == 100 ? session.log.end - 1 : first + span * static_cast<TickCount>(state.range(0)) / 100;
    for (auto _ : state) {
        go_to_tick(session, goal);
        state.PauseTiming();
        go_to_tick(session, session.log.end);
        state.ResumeTiming();
    }
    report(state, session);
}
BENCHMARK(go_to_part)->Arg(0)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

/// Back over the whole of a day to what came first.
void go_back_to(benchmark::State& state, const Watch& watch, StopReason reason) {
    LongSession played(DAY);
    Session& session = played.session;
    Debugger debugger;
    add_watch(debugger, session.simulator.machine, watch);
    for (auto _ : state) {
        const Journey journey = run_back_until_stop(session, debugger, session.tick);
        if (journey.stop.reason != reason) {
            state.SkipWithError("it did not stop there");
            break;
        }
        state.PauseTiming();
        go_to_tick(session, session.log.end);
        state.ResumeTiming();
    }
    report(state, session);
}
BENCHMARK_CAPTURE(go_back_to, breakpoint, Watch{.kind = Watch::Kind::LINE, .area = 0, .line = 15},
                  StopReason::BREAKPOINT)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(go_back_to, watched_cell, Watch{.kind = Watch::Kind::CELL, .cell = 1}, StopReason::WATCHPOINT)
    ->Unit(benchmark::kMillisecond);

/// A running tick of a session in which nothing is watched.
void tick_of_a_session(benchmark::State& state) {
    LongSession played(0);
    for (auto _ : state)
        session_tick(played.session);
}
BENCHMARK(tick_of_a_session);

} // namespace
} // namespace quillon
