// SPDX-License-Identifier: MIT
// Sessions: whatever a person did, going back and forth leads to the same moments, and a recorded session goes the same
// way on another machine. What one did comes from random programs, keys, clicks and commands.
#include "session/session.h"

#include "core/fields.h"
#include "files/file_reading.h"
#include "fuzz/random_programs.h"
#include "fuzz/user.h"
#include "session/machine_image.h"
#include "session/replay.h"
#include "session/travel.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace quillon::testing {
namespace {

/// A simulator at the beginning of a session, with a disk that holds one listing.
struct Recorded {
    explicit Recorded(const std::string& listing) : simulator(fuzz::make_simulator()), session(*simulator) {
        simulator->disk.read_file = [listing](const std::string& path, std::size_t, FileKind) {
            return path.ends_with(".bas") ? FileContents{ReadStatus::READ, listing} : FileContents{};
        };
        begin_session(session);
        session_input(session, {.verb = InputVerb::LOAD, .text = "/somewhere/x.bas"});
    }

    /// Ticks, with something that a person does before every fourth or so.
    void play(fuzz::Choices& choices, int ticks) {
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_RUN}});
        for (int i = 0; i < ticks; ++i) {
            if (choices.below(4) == 0) {
                for (const Input& input : fuzz::choose_inputs(choices))
                    session_input(session, input);
            }
            session_tick_drawn(session);
        }
    }

    std::unique_ptr<Simulator> simulator;
    Session session;
};

/// A moment and the picture that it shows.
struct Seen {
    Moment moment;
    Canvas canvas;

    explicit Seen(Session& session) : moment(present_moment(session)), canvas(session.simulator.lcd.canvas) {}
};

void expect_same(const Seen& a, const Seen& b, const char* where, std::uint64_t seed) {
    EXPECT_EQ(record_difference(a.moment.machine, b.moment.machine), "") << where << ", seed " << seed;
    EXPECT_TRUE(a.moment == b.moment) << where << ", seed " << seed;
    EXPECT_TRUE(a.canvas.pixels == b.canvas.pixels) << where << ", seed " << seed;
}

std::vector<std::string> all_listings(std::uint32_t random_ones) {
    std::vector<std::string> listings;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_EXAMPLES)) {
        if (entry.path().extension() == ".bas")
            listings.push_back(read_file(entry.path(), LISTING_SIZE_MAX).bytes);
    }
    for (std::uint32_t seed = 1; seed <= random_ones; ++seed)
        listings.push_back(fuzz::RandomProgram(seed).listing());
    return listings;
}

TEST(Session, GoesBackAndForthToTheSameMoments) {
    std::uint64_t seed = 0;
    for (const std::string& listing : all_listings(1000)) {
        fuzz::Choices choices(++seed);
        Recorded recorded(listing);
        Session& session = recorded.session;
        recorded.play(choices, 20 + choices.below(40));
        const TickCount middle = session.tick;
        const Seen at_middle(session);
        recorded.play(choices, 20 + choices.below(40));
        const TickCount end = session.tick;
        const Seen at_end(session);

        go_to_tick(session, middle);
        expect_same(Seen(session), at_middle, "back", seed);
        while (session.tick < end)
            session_tick_drawn(session);
        expect_same(Seen(session), at_end, "forth", seed);
        go_to_tick(session, 0);
        go_to_tick(session, end);
        expect_same(Seen(session), at_end, "from the start", seed);
        EXPECT_FALSE(session.answers_missing) << seed;
    }
}

TEST(Session, ReplaysTheSameWayAndNoticesWhatDiffers) {
    std::uint64_t seed = 5000;
    for (const std::string& listing : all_listings(100)) {
        fuzz::Choices choices(++seed);
        Recorded recorded(listing);
        recorded.play(choices, 80);
        bool repeats = false;
        const std::string text = session_text(record_session(recorded.session, repeats));
        EXPECT_TRUE(repeats) << seed;
        EXPECT_EQ(text.find("/somewhere"), std::string::npos);

        SessionFault fault;
        auto file = parse_session(text, fault);
        ASSERT_TRUE(file) << fault.line << ": " << fault.text;
        EXPECT_EQ(session_text(*file), text);
        Simulator other;
        Session again(other);
        const ReplayResult result = replay_session(again, *file);
        EXPECT_TRUE(result.verified) << seed << ": " << result.differs << " at tick " << result.ticks;
        EXPECT_EQ(result.ticks, recorded.session.tick);
        other.machine.error.system_message = recorded.simulator->machine.error.system_message; // has the path
        EXPECT_EQ(record_difference(other.machine, recorded.simulator->machine), "") << seed;
    }
}

/// Types on the command line; what it shows is checked to the tick.
TEST(Session, NoticesAChangedByteAtItsTick) {
    Recorded recorded("[P0]\n10 A=1\n");
    Session& session = recorded.session;
    session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_LINE}});
    TickCount tick_of_digit = 0;
    for (const char c : std::string("\rA=7+1")) {
        const bool is_exe = c == '\r';
        session_input(session, is_exe ? Input{.verb = InputVerb::EXE}
                                      : Input{.verb = InputVerb::TEXT, .text = std::string(1, c)});
        session_tick(session);
        session_input(session, {.verb = InputVerb::TEXT});
        session_tick(session);
        if (c == '7')
            tick_of_digit = session.tick - 1;
    }
    bool repeats = false;
    SessionFile file = record_session(session, repeats);
    for (LogEntry& entry : file.entries) {
        if (entry.input.text == "7")
            entry.input.text = "8";
    }
    Simulator other;
    Session again(other);
    const ReplayResult result = replay_session(again, file);
    EXPECT_FALSE(result.verified);
    EXPECT_EQ(result.differs, "display");
    EXPECT_EQ(result.ticks, tick_of_digit);
}

TEST(Session, DropsTheFutureOnlyForAnInput) {
    Recorded recorded("[P0]\n10 A=A+1\n20 GOTO 10\n");
    Session& session = recorded.session;
    const double& a = recorded.simulator->machine.variables[0].number;
    session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_RUN}});
    for (int i = 0; i < 20; ++i)
        session_tick(session);
    EXPECT_EQ(a, 10);
    go_to_tick(session, 10);
    EXPECT_EQ(a, 5);
    EXPECT_TRUE(has_future(session));
    session_tick(session);
    session_input(session, {.verb = InputVerb::CELL, .word = "A", .text = "100"});
    EXPECT_FALSE(has_future(session));
    for (int i = 0; i < 4; ++i)
        session_tick(session);
    EXPECT_EQ(a, 102);
    EXPECT_EQ(session.log.end, 15U);
}

/// Days at the machine, by moments that are all alike.
TEST(SessionLog, StaysWithinItsMemory) {
    Simulator simulator;
    const Moment moment = take_moment(simulator, false, nullptr);
    SessionLog log;
    begin_log(log, moment);
    for (int day = 0; day < 5; ++day) {
        const TickCount end = log.end + 86'400'000; // a thousand ticks a second
        while (log.end < end) {
            log.end += log.spacing;
            add_entry(log, {.verb = InputVerb::TEXT, .text = std::string(15, 'x')});
            add_snapshot(log, moment);
        }
        EXPECT_LE(log_bytes(log), LOG_BYTES_MAX);
        EXPECT_EQ(log.from_the_start, day < 3) << day;
        EXPECT_EQ(log.snapshots.front().entry, 0U);
        for (std::size_t i = 1; i < log.snapshots.size(); ++i)
            EXPECT_LE(log.snapshots[i].tick - log.snapshots[i - 1].tick, SPACING_MAX);
        for (const TickCount tick : {log.snapshots.front().tick, log.end / 2 + log.snapshots.front().tick / 2, log.end})
            EXPECT_LE(snapshot_before(log, tick).tick, tick);
    }
}

TEST(MomentImage, ReadsBackToTheSameMoment) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        fuzz::Choices choices(seed);
        Recorded recorded(fuzz::RandomProgram(seed).listing());
        recorded.play(choices, choices.below(100));
        const Moment moment = present_moment(recorded.session);
        const std::string image = moment_image(moment);
        ImageFault fault{};
        const auto read = read_moment_image(image, fault);
        ASSERT_TRUE(read) << seed << ": " << fault_text(fault);
        EXPECT_EQ(record_difference(read->machine, moment.machine), "") << seed;
        EXPECT_TRUE(*read == moment) << seed;
        EXPECT_FALSE(read_moment_image(image.substr(0, image.size() - 1), fault));
        std::string changed = image;
        changed[image.size() * static_cast<std::size_t>(choices.below(256)) / 256] ^= 1;
        EXPECT_FALSE(read_moment_image(changed, fault));
    }
}

struct BadFile {
    const char* text;
    int line;
    const char* part; ///< of the sentence
};

TEST(SessionFile, SaysWhatIsWrongWithItsLine) {
    constexpr BadFile FILES[] = {
        {"", 1, "not a session file"},
        {"quillon session 2\nend 0\n", 1, "of this version"},
        {"quillon session 1\n", 1, "has been cut"},
        {"quillon session 1\nat 3 exe\n", 2, "has been cut"},
        {"quillon session 1\nhello\nend 0\n", 2, "begins with"},
        {"quillon session 1\nstart run\nend 0\n", 2, "starts with set"},
        {"quillon session 1\nstart set run_page 10\nend 0\n", 2, "from 0 to 9"},
        {"quillon session 1\nstart cell A 1x\nend 0\n", 2, "Name a cell"},
        {"quillon session 1\nat 5 exe\nat 4 exe\nend 9\n", 3, "not before"},
        {"quillon session 1\nat 5 tick 3\nend 9\n", 2, "no such command"},
        {"quillon session 1\nat 0 press%2\nend 9\n", 2, "hexadecimal"},
        {"quillon session 1\nat 0 answer-file 3\n|ab\nend 9\n", 3, "announced"},
        {"quillon session 1\nsee 1 abc 0 0 zero 0\nend 9\n", 2, "After see"},
        {"quillon session 1\nend 1000000001\n", 2, "A tick"},
        {"quillon session 1\nimage 0g\nend 1\n", 2, "hexadecimal digits"},
        {"quillon session 1\nimage 00\nend 1\n", 3, "not a saved state"},
    };
    for (const BadFile& file : FILES) {
        SessionFault fault;
        EXPECT_FALSE(parse_session(file.text, fault)) << file.text;
        EXPECT_EQ(fault.line, file.line) << file.text << fault.text;
        EXPECT_NE(fault.text.find(file.part), std::string::npos) << file.text << fault.text;
    }
}

} // namespace
} // namespace quillon::testing
