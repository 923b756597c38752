// SPDX-License-Identifier: MIT
// The host's commands by number, through the driving protocol: what each changes in the whole state, from every run
// state, that it changes nothing else, and what it asks of the window (host_commands.txt). Loads, from the same state.
#include "shell/commands.h"
#include "tests/protocols/driven.h"
#include "tests/support/cases_file.h"

#include <sstream>

namespace quillon::testing {
namespace {

/// A machine in the middle of a program, with something in every field that a command could change.
struct Used : Driven {
    explicit Used(RunState run_state) {
        load("[P0]\n10 FOR I=1 TO 9:GOSUB 20\n20 PRINT \"ABCDEFGHIJKLMNOPQ\";:PRINT\n30 DATA 1\n"
             "[P4]\n5 DATA 2,3\n7 A=1\n");
        all("run; tick 13; page 4; set timer_interval 31");
        m().run.run_state = run_state;
        m().run.prev_state = STATE_TO_COMMAND;
        m().run.base_state = STATE_STOPPED; // not what any command sets
        m().run.saved_run_state = STATE_INPUT;
        m().error.error_code = ERROR_ARITHMETIC;
        m().error.error_detail = "left over";
        m().run.resume.saved_token = TOKEN_COLON;
        m().run.program_ended = m().screen.print_mode = m().sound.sound_holds_run = true;
        m().eval.stmt_kind = m().run.resume.saved_stmt_kind = m().run.scroll.kind_after_scroll = KIND_PRINT;
        m().run.scroll.state_after_scroll = STATE_PRINT_WAIT;
        m().screen.display_offset = 9;
        m().settings.angle_unit = static_cast<AngleUnit>(9);
        m().settings.zoom = 7;
        m().random_seed = 99;
        m().entry.entry_line.text = "typed";
        m().entry.history[0] = "A=1";
        m().entry.history_index = 0;
        m().sound.tone.samples = 100;
        m().sound.sound_ticks_left = 4;
    }
    /// For any change: the session takes the record as it is found.
    Machine& m() {
        session.session->as_left.reset();
        return session.simulator->machine;
    }

    /// Takes back what no machine can tick with.
    void make_whole() {
        m().run.base_state = STATE_RUN;
        m().settings.angle_unit = ANGLE_DEG;
    }
};

const std::map<std::string, std::string> LISTINGS = {{"GOOD", "[P0]\n10 A=1\n[P2]\n"},
                                                     {"FAULTY", "[P0]\n10 A=1\n10 B=1\n"}};

/// The changes by each command or listing in each state; different ones one after the other.
std::string changes_by_commands(const FileCase& row) {
    const std::size_t end = row.input.find(" in ");
    std::istringstream numbers(row.input.substr(0, end));
    const std::string states = end == std::string::npos ? "0123456789" : row.input.substr(end + 4);
    std::set<std::string> all_changes;
    for (std::string number; numbers >> number;) {
        for (const char state : states) {
            if (state == ' ')
                continue;
            Used t(static_cast<RunState>(state - '0'));
            const bool is_command = std::isdigit(number[0]) != 0;
            t.m().trace.trace_mode = !is_command;
            const TemporaryFile file(LISTINGS.contains(number) ? LISTINGS.at(number) : "");
            const std::string path = LISTINGS.contains(number) ? file.path : number;
            all_changes.insert(t.changed_by(is_command ? "host " + number : "load " + path));
        }
    }
    std::string joined;
    for (const std::string& changes : all_changes)
        joined += (joined.empty() ? "" : " or else ") + changes;
    return joined;
}

TEST(HostCommands, ChangeTheirFieldsAndNoOtherFromEveryState) {
    expect_cases("protocols/host_commands.txt", changes_by_commands);
}

TEST(HostCommands, LoadTheListingAgain) {
    const TempFolder folder;
    const std::string path = folder / "good one.bas";
    put_file(path, "[P0]\n10 A=1\n[P2]\n");
    Used t(STATE_STOPPED);
    t.all("load " + path);
    EXPECT_EQ(window_title(*t.session.simulator), "Quillon Simulator. [good one.bas]");
    put_file(path, "[P7]\n10 A=1\n");
    t.make_whole();
    t.all("run; tick; host 40014; tick");
    EXPECT_EQ(t.state()["visible"].get<std::string>().substr(8), "6_89") << "read anew";
    std::filesystem::remove(path);
    EXPECT_EQ(t.changed_by("host 40015"), "system_message=:[" + path + "] | stop-sound | message-box :[" + path + "]")
        << "an editor may be saving it at this moment";
    EXPECT_EQ(t.session.simulator->preferences.last_file, path);
    t.all("set cursor_interval 7; host 40043; host 40043");
    EXPECT_EQ(t.m().settings.cursor_interval, 7) << "the blink interval is not computed again";
}

TEST(HostCommands, LeaveNoListingAfterAFaultyOne) {
    const TemporaryFile good(LISTINGS.at("GOOD")), faulty(LISTINGS.at("FAULTY"));
    for (const bool reload : {false, true}) {
        SCOPED_TRACE(reload);
        Used t(STATE_RUN);
        Simulator& s = *t.session.simulator;
        s.preferences.last_file = reload ? faulty.path : good.path;
        s.skin_name = "dots.bmp";
        t.all("host 40037; " + (reload ? "host 40015" : "load " + faulty.path));
        EXPECT_EQ(s.preferences.last_file, faulty.path) << "it stays, to be mended";
        EXPECT_EQ(t.state()["skin"], "");
        EXPECT_EQ(t.m().listing->data[0].kind, DataItem::END);
        t.make_whole();
        t.all("tick; run");
        EXPECT_EQ(t.state()["visible"], "P 0123 56789") << "nothing is there to run";
    }
}

} // namespace
} // namespace quillon::testing
