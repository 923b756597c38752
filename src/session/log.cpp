// SPDX-License-Identifier: MIT
// Keeping a session within its memory.
#include "session/log.h"

#include <algorithm>
#include <set>

namespace quillon {
namespace {

std::size_t bytes_of_entry(const LogEntry& entry) {
    const Input& input = entry.input;
    return sizeof entry + input.word.size() + input.text.size() + (input.content ? input.content->size() : 0);
}

std::size_t bytes_of_listing(const Listing& listing) {
    return sizeof listing + listing.text.capacity() + listing.literals.capacity() +
           listing.tokens.capacity() * sizeof(ProgramToken) + listing.data.capacity() * sizeof(DataItem);
}

/// Keeps every second snapshot, the first and the last among them, and takes them half as often from now on.
void thin_out(SessionLog& log) {
    std::vector<Snapshot> kept;
    for (std::size_t i = 0; i < log.snapshots.size(); ++i) {
        if (i % 2 == 0 || i + 1 == log.snapshots.size())
            kept.push_back(std::move(log.snapshots[i]));
    }
    log.snapshots = std::move(kept);
    log.spacing *= 2;
}

/// Forgets the oldest eighth of the snapshots, and what came before the first that is left.
void forget_oldest(SessionLog& log) {
    const std::size_t count = std::max<std::size_t>(log.snapshots.size() / 8, 1);
    if (count >= log.snapshots.size())
        return;
    log.snapshots.erase(log.snapshots.begin(), log.snapshots.begin() + static_cast<std::ptrdiff_t>(count));
    const std::size_t gone = log.snapshots.front().entry;
    for (std::size_t i = 0; i < gone; ++i)
        log.entry_bytes -= bytes_of_entry(log.entries[i]);
    log.entries.erase(log.entries.begin(), log.entries.begin() + static_cast<std::ptrdiff_t>(gone));
    for (Snapshot& snapshot : log.snapshots)
        snapshot.entry -= gone;
    std::erase_if(log.marks, [&log](const Mark& mark) { return mark.tick < log.snapshots.front().tick; });
    log.from_the_start = false;
}

} // namespace

void begin_log(SessionLog& log, Moment moment) {
    log = {};
    log.snapshots.push_back({0, 0, std::make_shared<const Moment>(std::move(moment))});
}

void add_entry(SessionLog& log, Input input) {
    log.entries.push_back({log.end, std::move(input)});
    log.entry_bytes += bytes_of_entry(log.entries.back());
}

void add_snapshot(SessionLog& log, Moment moment) {
    log.snapshots.push_back({log.end, log.entries.size(), std::make_shared<const Moment>(std::move(moment))});
    if (log.snapshots.size() > SNAPSHOTS_MAX && log.spacing < SPACING_MAX)
        thin_out(log);
    while (log.snapshots.size() > SNAPSHOTS_MAX || (log.snapshots.size() > 1 && log_bytes(log) > LOG_BYTES_MAX))
        forget_oldest(log);
}

void add_mark(SessionLog& log, Mark::Kind kind) {
    if (log.marks.size() == MARKS_MAX)
        log.marks.erase(log.marks.begin(), log.marks.begin() + MARKS_MAX / 2);
    log.marks.push_back({log.end, kind});
}

const Snapshot& snapshot_before(const SessionLog& log, TickCount tick) {
    const auto later = std::upper_bound(log.snapshots.begin(), log.snapshots.end(), tick,
                                        [](TickCount t, const Snapshot& snapshot) { return t < snapshot.tick; });
    return later == log.snapshots.begin() ? *later : *(later - 1);
}

std::size_t first_entry_at(const SessionLog& log, TickCount tick) {
    const auto first = std::lower_bound(log.entries.begin(), log.entries.end(), tick,
                                        [](const LogEntry& entry, TickCount t) { return entry.tick < t; });
    return static_cast<std::size_t>(first - log.entries.begin());
}

void drop_future(SessionLog& log, TickCount tick, std::size_t entry) {
    for (std::size_t i = entry; i < log.entries.size(); ++i)
        log.entry_bytes -= bytes_of_entry(log.entries[i]);
    log.entries.resize(entry);
    std::erase_if(log.snapshots, [=](const Snapshot& s) { return s.tick > tick || s.entry > entry; });
    std::erase_if(log.marks, [tick](const Mark& mark) { return mark.tick > tick; });
    log.end = tick;
}

std::size_t log_bytes(const SessionLog& log) {
    std::set<const void*> counted;
    std::size_t bytes = log.entry_bytes + log.snapshots.size() * (sizeof(Snapshot) + sizeof(Moment)) +
                        log.marks.capacity() * sizeof(Mark);
    for (const Snapshot& snapshot : log.snapshots) {
        const Listing& listing = *snapshot.moment->machine.listing;
        if (counted.insert(&listing).second)
            bytes += bytes_of_listing(listing);
        const SkinInPlace& skin = *snapshot.moment->skin;
        if (counted.insert(&skin).second)
            bytes += skin.picture.pixels.size() * sizeof(skin.picture.pixels[0]);
    }
    return bytes;
}

} // namespace quillon
