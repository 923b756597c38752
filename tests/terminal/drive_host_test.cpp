// The host's commands by number, through the driving protocol: what each changes in the whole state, from every run
// state, that it changes nothing else, and what it asks of the window.
#include "shell/commands.h"
#include "tests/support/temporary_file.h"
#include "tests/terminal/driven.h"

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

    /// What a command changed, as "name=value" by the alphabet, and what it asked for. A new display always shows from
    /// another place, so of the offset and of `visible` nothing is said; nor of the token, which is nobody's any more.
    std::string changed_by(const std::string& command) {
        const Json before = state();
        all(command);
        std::string changes;
        const Json after = state();
        for (const auto& [name, value] : after.items()) {
            const bool said = name != "host" && name != "visible" && name != "display_offset" && name != "token";
            if (said && before[name] != value)
                changes += name + "=" + (value.is_string() ? value.get<std::string>() : value.dump()) + " ";
        }
        for (const Json& asked : after["host"])
            changes += "| " + asked.get<std::string>() + " ";
        return changes;
    }
};

const std::string NO_SOUND = "sound_holds_run=0 sound_ticks_left=0 ";
const std::string STARTED =
    "base_state=0 cur_area=4 cur_line=0 data_pos=4 display= display_cursor=0 error_code=0 error_detail= for_depth=0 "
    "gosub_depth=0 kind_after_scroll=0 line_number=5 prev_state=5 print_mode=0 program_ended=0 run_state=0 "
    "saved_stmt_kind=0 saved_token=0 " +
    NO_SOUND + "state_after_scroll=0 stmt_kind=0 wait_counter=0 | stop-sound ";

TEST(HostCommands, ChangeTheirFieldsAndNoOtherFromEveryState) {
    struct Row {
        int command;
        std::string changes;
        int alias = 0; ///< a toolbar button that does the same
    };
    const Row rows[] = {
        {40001, NO_SOUND + "| stop-sound | command 40001 ", 40007},
        {40002, "| command 40002 "},
        {40003, STARTED, 40009},
        {40005, "| command 40005 ", 40008},
        {40006, "| command 40006 ", 40011},
        {40013, "| command 40013 ", 40012},
        {40016, "zoom=1 | command 40016 "},
        {40017, "zoom=2 | command 40017 "},
        {40018, "zoom=3 | command 40018 "},
        {40019, "zoom=4 | command 40019 "},
        {40024, "| command 40024 ", 40025},
        {40027, "run_page=0 "},
        {40028, "run_page=1 "},
        {40029, "run_page=2 "},
        {40030, "run_page=3 "},
        {40031, ""}, // selected already
        {40032, "run_page=5 "},
        {40033, "run_page=6 "},
        {40034, "run_page=7 "},
        {40035, "run_page=8 "},
        {40036, "run_page=9 "},
        {40037, "trace_mode=1 | trace ", 40026},
        {40038, "ascii_mode=0 "},
        {40041,
         "base_state=6 display=READY P4 display_cursor=8 entry= error_code=0 error_detail= history_index=-1 "
         "kind_after_scroll=0 prev_state=0 program_ended=0 run_state=0 saved_stmt_kind=0 saved_token=0 "
         "state_after_scroll=0 stmt_kind=17 wait_counter=0 ",
         40040},
        {40042, "| command 40042 "},
        {40043, "overdrive=1 timer_interval=5 "},
        {40045, "angle_unit=0 "},
        {40046, "angle_unit=1 "},
        {40047, "angle_unit=2 "},
        {40048, "", 40049},
        // numbers that are no commands
        {40020, ""},
        {40023, ""},
        {40039, ""},
        {40044, ""},
    };
    for (int state = STATE_RUN; state <= STATE_TO_COMMAND; ++state) {
        for (const Row& row : rows) {
            std::string expected = row.changes;
            if (row.command == COMMAND_RUN && state == STATE_STOPPED)
                expected = "display= prev_state=3 run_state=2 "; // resumed, and a tone plays on
            else if ((row.command == COMMAND_RUN || row.command == COMMAND_LINE) && state == STATE_RUN)
                expected.erase(expected.find("run_state=0 "), 12);
            for (const int number : {row.command, row.alias}) {
                if (number == 0)
                    continue;
                SCOPED_TRACE(std::to_string(number) + " in state " + std::to_string(state));
                EXPECT_EQ(Used(state).changed_by("host " + std::to_string(number)), expected);
            }
        }
    }
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

TEST(HostCommands, TraceHoldsAProgramWhileItsWindowIsOpen) {
    Driven t;
    t.start("[P0]\n10 A=1\n20 B=2\n30 C=3\n");
    t.all("host 40037; tick 5");
    EXPECT_EQ(t.vars(), Json::object()) << "it waits for a step";
    t.all("exe; tick");
    EXPECT_EQ(t.vars(), Json({{"A", 1}}));
    t.all("host 40026; tick 3");
    EXPECT_EQ(t.vars().size(), 3U) << "it runs on when nobody looks any more";
}

// --- Listings ---

struct Loads : ::testing::Test {
    Loads() {
        put_file(good, "[P0]\n10 A=1\n[P2]\n");
        put_file(faulty, "[P0]\n10 A=1\n10 B=1\n");
    }
    [[nodiscard]] std::string title() const { return window_title(*t.session.simulator); }
    TempFolder folder;
    Used t{STATE_STOPPED};
    std::string good = folder / "good one.bas";
    std::string faulty = folder / "faulty.bas";
    std::string& last_file = t.session.simulator->settings.last_file;
};

TEST_F(Loads, ReplaceEverythingButVariablesAndModes) {
    t.m().random_seed = 99;
    const std::string loaded = t.changed_by("load " + good);
    EXPECT_EQ(loaded, "cur_line=0 data_pos=0 display= display_cursor=0 error_code=0 for_depth=0 gosub_depth=0 "
                      "kind_after_scroll=0 line_number=10 prev_state=0 print_mode=0 program_ended=0 random_seed=1 "
                      "run_state=5 saved_stmt_kind=0 saved_token=0 " +
                          NO_SOUND + "state_after_scroll=0 wait_counter=0 | stop-sound ");
    EXPECT_EQ(last_file, good);
    EXPECT_EQ(title(), "Quillon Simulator. [good one.bas]");
    put_file(good, "[P7]\n10 A=1\n");
    t.make_whole();
    t.all("run; tick; host 40014; tick");
    EXPECT_EQ(t.state()["visible"].get<std::string>().substr(8), "6_89") << "read anew";
    std::filesystem::remove(good);
    t.state();
    EXPECT_EQ(t.changed_by("host 40015"), "system_message=:[" + good + "] | stop-sound | message-box :[" + good + "] ")
        << "an editor may be saving it at this moment";
    EXPECT_EQ(last_file, good);
}

TEST_F(Loads, ThatCannotBeReadChangeNothing) {
    for (const std::string& path : {folder / "missing.bas", folder.path}) {
        Used used(STATE_STOPPED);
        used.session.simulator->settings.last_file = good;
        EXPECT_EQ(used.changed_by("load " + path),
                  NO_SOUND + "system_message=:[" + path + "] | stop-sound | message-box :[" + path + "] ");
        EXPECT_EQ(used.session.simulator->settings.last_file, good);
    }
}

TEST_F(Loads, WithAFaultLeaveNoListing) {
    for (const bool reload : {false, true}) {
        SCOPED_TRACE(reload);
        Used used(STATE_RUN);
        Simulator& s = *used.session.simulator;
        used.all("host 40037");
        s.settings.last_file = reload ? faulty : good;
        s.skin_name = "dots.bmp";
        used.state();
        used.all(reload ? "host 40015" : "load " + faulty);
        const Json state = used.state();
        const Json left = {{"run_state", 5},  {"prev_state", 0},    {"display", ""},  {"display_cursor", 0},
                           {"error_code", 0}, {"error_detail", ""}, {"for_depth", 0}, {"gosub_depth", 0},
                           {"trace_mode", 0}, {"line_number", 0},   {"skin", ""}};
        for (const auto& [name, value] : left.items())
            EXPECT_EQ(state[name], value) << name;
        EXPECT_EQ(state["host"], Json({"stop-sound", "trace", "message-box :3 LINE"})) << "its trace window closes";
        EXPECT_EQ(s.settings.last_file, reload ? "" : faulty) << "one that was named stays, to be mended";
        EXPECT_EQ(used.m().data_index[0].kind, DataItem::END);
        used.make_whole();
        used.all("tick; run");
        EXPECT_EQ(used.state()["visible"], "P 0123 56789") << "nothing is there to run";
    }
}

} // namespace
} // namespace quillon::testing
