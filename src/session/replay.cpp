// SPDX-License-Identifier: MIT
// Going through session files: inputs as they came, answers as they were given, observations compared.
#include "session/replay.h"

#include "session/cell_text.h"
#include "session/host_gate.h"
#include "session/machine_image.h"
#include "shell/skins.h"

#include <algorithm>
#include <utility>

namespace quillon {
namespace {

/// Of the observations of a session so many are kept exactly; from then on each stands for twice as many.
constexpr std::size_t SIGHTS_MAX = 8192;

/// Sums up all that was observed, one observation after the other.
std::uint32_t add_to_sum(std::uint32_t sum, const Observation& seen) {
    const auto mix = [&sum](std::uint32_t value) { sum = (sum ^ value) * 16777619U; }; // FNV-1a
    for (const char c : seen.display)
        mix(static_cast<unsigned char>(c));
    mix(static_cast<std::uint32_t>(seen.run_state));
    mix(static_cast<std::uint32_t>(seen.tone));
    mix(static_cast<std::uint32_t>(seen.error_code));
    return sum;
}

/// Follows a machine from observation to observation.
struct Observer {
    Observation last;
    std::uint32_t sum = 2166136261U;

    /// Whether something is to be seen that was not there after the tick before.
    bool follow(const Session& session) {
        Observation now = observe(session);
        if (now == last)
            return false;
        last = std::move(now);
        sum = add_to_sum(sum, last);
        return true;
    }
};

/// Feeds a session with the entries of a file, and gives the answers in it.
struct Player {
    Session& session;
    const std::vector<LogEntry>& entries;
    std::size_t next = 0;

    /// The answer that was given here, null when it was another.
    const Input* answer(InputVerb verb) {
        if (next == entries.size() || entries[next].tick != session.tick || entries[next].input.verb != verb)
            return nullptr;
        return &entries[next++].input;
    }

    /// The inputs of this tick. Answers among them are taken while they are applied, those after them by the tick; what
    /// is not asked for by then is left out.
    void feed_inputs() {
        while (next < entries.size() && entries[next].tick < session.tick)
            ++next;
        while (next < entries.size() && entries[next].tick == session.tick && !is_answer(entries[next].input))
            session_input(session, entries[next++].input);
    }
};

/// The first member that is not the same.
std::string first_difference(const Observation& now, const Observation& then) {
    if (now.run_state != then.run_state)
        return "state";
    if (now.error_code != then.error_code)
        return "error_code";
    if (now.tone != then.tone)
        return "tone";
    return now.display != then.display ? "display" : "";
}

/// Holds a machine against the sights of a file, tick by tick.
struct Comparison {
    const SessionFile& file;
    Observer observer{};
    std::size_t next = 0; ///< sight

    /// What differs after a tick; empty when nothing does.
    std::string follow(const Session& session) {
        const Observation before = observer.last;
        const bool changed = observer.follow(session);
        if (next == file.sights.size() || file.sights[next].tick != session.tick)
            return changed && file.sights_every == 1 ? first_difference(observer.last, before) : "";
        const Sight& sight = file.sights[next++];
        const std::string difference = first_difference(observer.last, sight.seen);
        return difference.empty() && observer.sum != sight.sum ? "display" : difference; // of an earlier one
    }
};

/// A host that is silent and gives the answers of the file, in place of the session's own until the end of a scope.
class PlayerHost {
public:
    explicit PlayerHost(Player& player) : session_(player.session) {
        host_.paste_text = [&player] {
            const Input* answer = player.answer(InputVerb::ANSWER_PASTE);
            return answer != nullptr ? BoundedText<15>(answer->text) : BoundedText<15>();
        };
        host_.milliseconds = [&player] {
            const Input* answer = player.answer(InputVerb::ANSWER_TIME);
            return answer != nullptr ? static_cast<std::uint32_t>(answer->numbers[0]) : 0U;
        };
        disk_.read_file = [&player](const std::string&, std::size_t, FileKind) {
            const Input* answer = player.answer(InputVerb::ANSWER_FILE);
            if (answer == nullptr)
                answer = player.answer(InputVerb::ANSWER_NO_FILE);
            return answer != nullptr ? file_of_answer(*answer) : FileContents{};
        };
        exchange();
    }
    ~PlayerHost() { exchange(); }
    PlayerHost(const PlayerHost&) = delete;
    PlayerHost& operator=(const PlayerHost&) = delete;

private:
    void exchange() {
        std::swap(session_.host, host_);
        std::swap(session_.window, window_);
        std::swap(session_.disk, disk_);
    }

    Session& session_;
    Host host_;
    Window window_;
    Disk disk_;
};

/// Begins a session with a machine as it was at the beginning of the file.
void start_from_file(Session& session, const SessionFile& file) {
    Simulator& s = session.simulator;
    load_skin(s, {});
    ImageFault fault{};
    if (const auto moment = file.image.empty() ? std::nullopt : read_moment_image(file.image, fault)) {
        restore_moment(s, *moment);
        session.tone_plays = moment->tone_plays;
    }
    for (const Input& input : file.start)
        apply_input(s, input);
    begin_session(session);
}

/// How a new machine becomes the one at the beginning of a session: settings and cells, when nothing else differs.
std::optional<std::vector<Input>> start_inputs(const Moment& begin) {
    Simulator fresh;
    std::vector<Input> inputs;
    for (const Field& field : fields()) {
        const long long number = field.get(begin.machine);
        if ((field.uses & FIELD_SETTABLE) != 0 && number != field.get(fresh.machine))
            inputs.push_back({.verb = InputVerb::SET, .numbers = {number}, .word = std::string(field.name)});
    }
    for (int i = 0; i < CELL_COUNT; ++i) {
        const Variable& cell = cell_at(begin.machine, static_cast<CellIndex>(i));
        auto text = cell_text(cell);
        if (!text)
            return std::nullopt;
        if (*text != "-")
            inputs.push_back(
                {.verb = InputVerb::CELL, .word = cell_path(static_cast<CellIndex>(i)), .text = std::move(*text)});
    }
    for (const Input& input : inputs)
        apply_input(fresh, input);
    const bool same = begin == take_moment(fresh, false, begin.skin);
    return same ? std::optional(std::move(inputs)) : std::nullopt;
}

/// Whether two machines are in the same state. The texts of the catalogue do not count: another one has none.
bool is_same_but_for_texts(const Machine& a, const Machine& b) {
    const auto copy = std::make_unique<Machine>(b);
    copy->error.error_detail = a.error.error_detail;
    copy->error.system_message = a.error.system_message;
    return a == *copy;
}

/// Keeps every second observation.
void thin_out(std::vector<Sight>& sights) {
    std::size_t kept = 0;
    for (std::size_t i = 1; i < sights.size(); i += 2)
        sights[kept++] = std::move(sights[i]);
    sights.resize(kept);
}

} // namespace

Observation observe(const Session& session) {
    const Machine& m = session.simulator.machine;
    const auto from = m.screen.display_line.begin() + m.screen.display_offset;
    Observation seen{.display = std::string(from, from + DISPLAY_WIDTH)};
    seen.run_state = number_of(m.run.run_state);
    seen.tone = session.tone_plays ? m.sound.tone.half_period : 0;
    seen.error_code = number_of(m.error.error_code);
    return seen;
}

SessionFile record_session(const Session& session, bool& repeats) {
    SessionFile file;
    const Snapshot& begin = session.log.snapshots.front();
    if (auto inputs = start_inputs(*begin.moment))
        file.start = std::move(*inputs);
    else
        file.image = moment_image(*begin.moment);
    file.entries = session.log.entries;
    for (LogEntry& entry : file.entries) {
        entry.tick -= begin.tick;
        if (entry.input.verb == InputVerb::LOAD)
            entry.input.text.erase(0, entry.input.text.find_last_of("/\\") + 1); // the disk is nobody's business
    }
    file.end = session.log.end - begin.tick;

    Simulator simulator;
    Session again(simulator);
    start_from_file(again, file);
    Player player{again, file.entries};
    const PlayerHost host(player);
    Observer observer;
    for (std::size_t changes = 0; again.tick < file.end;) {
        player.feed_inputs();
        session_tick(again);
        if (observer.follow(again) && ++changes % file.sights_every == 0)
            file.sights.push_back({again.tick, observer.last, observer.sum});
        if (file.sights.size() == SIGHTS_MAX) {
            thin_out(file.sights);
            file.sights_every *= 2;
        }
    }
    player.feed_inputs();
    const bool at_end = session.tick == session.log.end && !has_future(session);
    repeats = !at_end || is_same_but_for_texts(session.simulator.machine, simulator.machine);
    return file;
}

ReplayResult replay_session(Session& session, const SessionFile& file, TickCount until) {
    start_from_file(session, file);
    Player player{session, file.entries};
    const PlayerHost host(player);
    Comparison comparison{file};
    ReplayResult result{.verified = true};
    const TickCount end = std::min(file.end, until);
    while (session.tick < end && result.verified) {
        player.feed_inputs();
        session_tick(session);
        result.differs = comparison.follow(session);
        result.verified = result.differs.empty();
    }
    if (result.verified && session.tick == file.end)
        player.feed_inputs();
    result.ticks = session.tick;
    return result;
}

} // namespace quillon
