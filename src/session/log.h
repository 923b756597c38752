// SPDX-License-Identifier: MIT
// What a session remembers: every input with its tick, and moments from which any other is reached by running again.
// Bounded: moments thin out as a session grows, and when the memory is used up its oldest part is forgotten.
#pragma once

#include "session/input.h"
#include "session/moment.h"

#include <cstdint>
#include <vector>

namespace quillon {

/// Ticks since the session began.
using TickCount = std::uint64_t;

/// An input, and how many ticks had been made when it came.
struct LogEntry {
    TickCount tick = 0;
    Input input{};
};

/// A moment that is kept, right after its tick: before any input that came then.
struct Snapshot {
    TickCount tick = 0;
    std::size_t entry = 0; ///< entries that came before it
    std::shared_ptr<const Moment> moment;
};

/// A place in the session that a person may look for.
struct Mark {
    enum class Kind : std::uint8_t { ERROR, STOP, LOAD };
    TickCount tick = 0;
    Kind kind = Kind::ERROR;
};

/// What a log may take. A running tick costs some 30 ns, so from the nearest snapshot any moment is 50 ms away at most.
constexpr std::size_t LOG_BYTES_MAX = std::size_t{16} << 20;
constexpr std::size_t SNAPSHOTS_MAX = 256;
constexpr TickCount SPACING_FIRST = TickCount{1} << 12; ///< ticks between snapshots, at the beginning
constexpr TickCount SPACING_MAX = TickCount{1} << 20;
constexpr std::size_t MARKS_MAX = 10'000;

struct SessionLog {
    std::vector<LogEntry> entries;
    std::vector<Snapshot> snapshots; ///< never empty once a session has begun; the first is where it begins
    std::vector<Mark> marks;
    TickCount end = 0;                 ///< ticks that were made in all
    TickCount spacing = SPACING_FIRST; ///< between the newest snapshots
    std::size_t entry_bytes = 0;       ///< what the entries take
    bool from_the_start = true;        ///< nothing has been forgotten
};

/// Begins a log at a moment; what it held before is gone.
void begin_log(SessionLog& log, Moment moment);

/// Adds an input that comes now, at the end.
void add_entry(SessionLog& log, Input input);

/// Whether the tick that is now the last one is due for a snapshot.
inline bool wants_snapshot(const SessionLog& log) { return log.end - log.snapshots.back().tick >= log.spacing; }

/// Adds a snapshot of the end of the session, and makes room where it must.
void add_snapshot(SessionLog& log, Moment moment);

void add_mark(SessionLog& log, Mark::Kind kind);

/// The last snapshot that is not later than a tick; the first one for what has been forgotten.
const Snapshot& snapshot_before(const SessionLog& log, TickCount tick);

/// The first entry that came at this tick or later.
std::size_t first_entry_at(const SessionLog& log, TickCount tick);

/// Drops what came after the first `entry` entries and the tick `tick`.
void drop_future(SessionLog& log, TickCount tick, std::size_t entry);

/// What the log takes, in bytes: listings that several moments share count once.
std::size_t log_bytes(const SessionLog& log);

} // namespace quillon
