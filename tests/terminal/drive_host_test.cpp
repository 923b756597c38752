// The host's commands by number, through the driving protocol: what each changes in the whole state, from every run
// state, that it changes nothing else, and what it asks of the window (host_commands.txt). Loads, from the same state.
#include "shell/commands.h"
#include "tests/support/cases_file.h"
#include "tests/terminal/driven.h"

#include <sstream>

namespace quillon::testing {
namespace {

/// A machine in the middle of a program, with something in every field that a command could change.
struct Used : Driven {
    explicit Used(int run_state) {
        load("[P0]\n10 FOR I=1 TO 9:GOSUB 20\n20 PRINT \"ABCDEFGHIJKLMNOPQ\";:PRINT\n30 DATA 1\n"
             "[P4]\n5 DATA 2,3\n7 A=1\n");
        all("run; tick 13; page 4; set timer_interval 31");
        m().run_state = run_state;
        m().prev_state = STATE_TO_COMMAND;
        m().base_state = 3; // not what any command sets
        m().saved_run_state = STATE_INPUT;
        m().error_code = ERROR_ARITHMETIC;
        m().error_detail = "left over";
        m().saved_token = TOKEN_COLON;
        m().program_ended = m().print_mode = m().sound_holds_run = 1;
        m().stmt_kind = m().saved_stmt_kind = m().kind_after_scroll = KIND_PRINT;
        m().state_after_scroll = STATE_PRINT_WAIT;
        m().display_offset = 9;
        m().angle_unit = 9;
        m().zoom = 7;
        m().entry_line.text = "typed";
        m().history[0] = "A=1";
        m().history_index = 0;
        m().tone.samples = 100;
        m().sound_ticks_left = 4;
    }
    Machine& m() { return session.simulator->machine; }

    /// Takes back what no machine can tick with.
    void make_whole() {
        m().base_state = STATE_RUN;
        m().angle_unit = ANGLE_DEG;
    }
};

/// The changes of the first number in the first state, and each that differs from them.
std::string changes_by_commands(const FileCase& row) {
    const std::size_t end = row.input.find(" in ");
    std::istringstream numbers(row.input.substr(0, end));
    const std::string states = end == std::string::npos ? "0123456789" : row.input.substr(end + 4);
    std::set<std::string> all_changes;
    for (std::string number; numbers >> number;) {
        for (const char state : states) {
            if (state != ' ')
                all_changes.insert(Used(state - '0').changed_by("host " + number));
        }
    }
    std::string joined;
    for (const std::string& changes : all_changes)
        joined += (joined.empty() ? "" : " or else ") + changes;
    return joined;
}

TEST(HostCommands, ChangeTheirFieldsAndNoOtherFromEveryState) {
    expect_cases("terminal/host_commands.txt", changes_by_commands);
}

TEST(HostCommands, OverdriveGivesBackTheIntervalThatItTook) {
    for (const char* interval : {"1", "5", "30", "1000"}) {
        Used t(STATE_RUN);
        t.all("set cursor_interval 7; set timer_interval " + std::string(interval));
        const Json before = t.state();
        for (int round = 0; round < 2; ++round) {
            t.all("host 40043");
            EXPECT_EQ(t.state()["timer_interval"], 5);
            t.all("host 40043");
            EXPECT_EQ(t.state(), before);
        }
        EXPECT_EQ(t.m().cursor_interval, 7) << "blinking is not worked out anew";
    }
}

// --- Listings ---

struct Loads : ::testing::Test {
    Loads() {
        put_file(good, "[P0]\n10 A=1\n[P2]\n");
        put_file(faulty, "[P0]\n10 A=1\n10 B=1\n");
    }
    TempFolder folder;
    Used t{STATE_STOPPED};
    std::string good = folder / "good one.bas";
    std::string faulty = folder / "faulty.bas";
    std::string& last_file = t.session.simulator->settings.last_file;
};

TEST_F(Loads, ReplaceEverythingButVariablesAndModes) {
    t.m().random_seed = 99;
    EXPECT_EQ(t.changed_by("load " + good),
              "cur_line=0 data_pos=0 display= display_cursor=0 error_code=0 for_depth=0 gosub_depth=0 "
              "kind_after_scroll=0 line_number=10 prev_state=0 print_mode=0 program_ended=0 random_seed=1 run_state=5 "
              "saved_stmt_kind=0 saved_token=0 sound_holds_run=0 sound_ticks_left=0 state_after_scroll=0 "
              "wait_counter=0 | stop-sound");
    EXPECT_EQ(window_title(*t.session.simulator), "Quillon Simulator. [good one.bas]");
    put_file(good, "[P7]\n10 A=1\n");
    t.make_whole();
    t.all("run; tick; host 40014; tick");
    EXPECT_EQ(t.state()["visible"].get<std::string>().substr(8), "6_89") << "read anew";
    std::filesystem::remove(good);
    EXPECT_EQ(t.changed_by("host 40015"), "system_message=:[" + good + "] | stop-sound | message-box :[" + good + "]")
        << "an editor may be saving it at this moment";
    EXPECT_EQ(last_file, good);
}

TEST_F(Loads, ThatCannotBeReadChangeNothing) {
    last_file = good;
    EXPECT_EQ(t.changed_by("load " + folder.path), "sound_holds_run=0 sound_ticks_left=0 system_message=:[" +
                                                       folder.path + "] | stop-sound | message-box :[" + folder.path +
                                                       "]");
    EXPECT_EQ(last_file, good);
}

TEST_F(Loads, WithAFaultLeaveNoListing) {
    for (const bool reload : {false, true}) {
        SCOPED_TRACE(reload);
        Used used(STATE_RUN);
        Simulator& s = *used.session.simulator;
        used.all("host 40037");
        s.settings.last_file = reload ? faulty : good;
        s.skin_name = "dots.bmp";
        EXPECT_EQ(used.changed_by(reload ? "host 40015" : "load " + faulty),
                  "cur_line=0 data_pos=0 display= display_cursor=0 error_code=0 error_detail= for_depth=0 "
                  "gosub_depth=0 kind_after_scroll=0 line_number=0 prev_state=0 print_mode=0 program_ended=0 "
                  "run_state=5 saved_stmt_kind=0 saved_token=0 skin= sound_holds_run=0 sound_ticks_left=0 "
                  "state_after_scroll=0 system_message=:3 LINE trace_mode=0 wait_counter=0 | stop-sound | trace | "
                  "message-box :3 LINE"); // its trace window closes
        EXPECT_EQ(s.settings.last_file, reload ? "" : faulty) << "one that was named stays, to be mended";
        EXPECT_EQ(used.m().data_index[0].kind, DataItem::END);
        used.make_whole();
        used.all("tick; run");
        EXPECT_EQ(used.state()["visible"], "P 0123 56789") << "nothing is there to run";
    }
}

} // namespace
} // namespace quillon::testing
