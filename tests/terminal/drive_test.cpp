// The driving protocol: its commands, its refusals, and how it writes texts and numbers.
#include "tests/support/child_process.h"
#include "tests/terminal/driven.h"

namespace quillon::testing {
namespace {

const std::string GOOD = R"({"ok":true})";

TEST(Drive, StartsWithTheStateThatItDescribes) {
    Driven drive;
    const Json zero = {"prev_state",        "base_state",      "program_ended",    "state_after_scroll",
                       "kind_after_scroll", "saved_run_state", "stmt_kind",        "saved_stmt_kind",
                       "saved_token",       "cur_area",        "cur_line",         "line_number",
                       "run_page",          "display_cursor",  "display_offset",   "wait_counter",
                       "error_code",        "angle_unit",      "print_mode",       "for_depth",
                       "gosub_depth",       "data_pos",        "sound_ticks_left", "sound_holds_run",
                       "cursor_visible",    "blink_counter",   "operand_done",     "enter_request",
                       "trace_mode",        "overdrive",       "held_key",         "soft_key_code",
                       "soft_shift_latch",  "soft_alt_latch",  "soft_ctrl_latch",  "last_result"};
    Json expected = {{"ok", true},           {"run_state", 5},
                     {"history_index", -1},  {"random_seed", 1},
                     {"set_e_digits", -1},   {"set_f_digits", -1},
                     {"set_g_digits", 9},    {"ascii_mode", 1},
                     {"timer_interval", 30}, {"zoom", 1},
                     {"display", ""},        {"visible", "            "},
                     {"entry", ""},          {"key_string", ""},
                     {"error_detail", ""},   {"system_message", ""},
                     {"skin", ""},           {"history", Json::array()},
                     {"host", Json::array()}};
    for (const auto& name : zero)
        expected[name.get<std::string>()] = 0;
    Json state = drive.state();
    EXPECT_TRUE(state.contains("token"));
    state.erase("token");
    EXPECT_EQ(state, expected) << Json::diff(state, expected);
    EXPECT_EQ(drive.vars(), Json::object());
}

TEST(Drive, NewForgetsEverything) {
    Driven drive;
    const Json fresh = drive.state();
    const TemporaryFile catalogue("[SYSTEM]\nM_005=DIV\n");
    drive("catalogue " + catalogue.path);
    drive.start("[P0]\n10 A=1:B$=\"X\":FOR I=1 TO 9:PRINT 1/0\n");
    drive("set random_seed 99");
    drive("set wait_print_sc 3");
    drive("set cursor_interval 1");
    drive("key 41");
    drive("page 7");
    drive("tick 9");
    EXPECT_NE(drive.state(), fresh);
    EXPECT_EQ(drive("new"), Json::parse(GOOD));
    EXPECT_EQ(drive.state(), fresh);
    EXPECT_EQ(drive.vars(), Json::object());
    drive.start("[P0]\n10 PRINT 1/0\n");
    drive("tick");
    EXPECT_EQ(drive.state()["error_detail"].get<std::string>().find("DIV"), std::string::npos);
}

TEST(Drive, LoadsListings) {
    Driven drive;
    drive("set random_seed 7");
    const std::string missing = "/nowhere/a \xE3\x82\xA1.bas";
    Json answer = drive("load " + missing);
    EXPECT_EQ(answer, Json({{"ok", true}, {"loaded", false}, {"system_message", ":[" + missing + "]"}}));
    EXPECT_EQ(drive.state()["random_seed"], 7) << "nothing has changed";
    answer = drive.load("[P0]\n10 A=1\n");
    EXPECT_EQ(answer, Json({{"ok", true}, {"loaded", true}, {"system_message", answer["system_message"]}}));
    EXPECT_EQ(drive.state()["random_seed"], 1);
    const TemporaryFile catalogue("[SYSTEM]\nM_027=\x8F\x87\n");
    drive("catalogue " + catalogue.path);
    drive("state");
    answer = drive.load("[P0]\n20 A=1\n10 B=1\n");
    EXPECT_EQ(answer, Json({{"ok", true}, {"loaded", false}, {"system_message", "\u9806:3 LINE"}}));
    const Json state = drive.state();
    EXPECT_EQ(state["host"], Json({"message-box \u9806:3 LINE"}));
    EXPECT_EQ(state["system_message"], "\u9806:3 LINE");
    EXPECT_EQ(state["run_state"], 5);
    EXPECT_EQ(state["error_code"], 0);
    EXPECT_EQ(drive.state()["host"], Json::array()) << "told once";
}

TEST(Drive, RunsStopsAndTicks) {
    Driven drive;
    drive.start("[P0]\n10 A=1:B=2:C=3\n20 PRINT \"ABCDEFGHIJKLMNOP\"\n30 GOTO 30\n[P2]\n5 X=1\n");
    EXPECT_EQ(drive("tick 3"), Json({{"ok", true}, {"ticks", 3}}));
    EXPECT_EQ(drive.vars(), Json({{"A", 1}, {"B", 2}, {"C", 3}}));
    EXPECT_EQ(drive("tick"), Json({{"ok", true}, {"ticks", 1}}));
    drive("tick 64");
    EXPECT_EQ(drive.state()["visible"], "ABCDEFGHIJKL");
    drive("tick");
    EXPECT_EQ(drive.state()["visible"], "BCDEFGHIJKLM");
    EXPECT_EQ(drive.state()["display"], "ABCDEFGHIJKLM");
    EXPECT_EQ(drive.state()["display_offset"], 1);
    EXPECT_EQ(drive("wait 1000"), Json({{"ok", true}, {"ticks", 75}}));
    EXPECT_EQ(drive.state()["visible"], "EFGHIJKLMNOP");
    EXPECT_EQ(drive("wait 1000"), Json({{"ok", true}, {"ticks", 0}}));
    EXPECT_EQ(drive("exe"), Json::parse(GOOD));
    EXPECT_EQ(drive.state()["enter_request"], 0);
    EXPECT_EQ(drive("wait 20"), Json({{"ok", true}, {"ticks", 20}}));
    EXPECT_EQ(drive("stop"), Json::parse(GOOD));
    EXPECT_EQ(drive.state()["run_state"], 3);
    drive("stop");
    EXPECT_EQ(drive.state()["display"], "P0-30");
    EXPECT_EQ(drive("page 2"), Json::parse(GOOD));
    drive("run");
    EXPECT_EQ(drive.state()["line_number"], 5);
    EXPECT_EQ(drive("wait 0"), Json({{"ok", true}, {"ticks", 0}}));
    EXPECT_EQ(drive("wait 100"), Json({{"ok", true}, {"ticks", 2}}));
    EXPECT_EQ(drive.vars()["X"], 1);
    EXPECT_EQ(drive("tick 0"), Json({{"ok", true}, {"ticks", 0}}));
}

TEST(Drive, TypesKeys) {
    Driven drive;
    drive.load("[P0]\n10 A=1\n");
    drive.session.simulator->machine.held_key = 65;
    EXPECT_EQ(drive("key 418CfF"), Json::parse(GOOD));
    EXPECT_EQ(drive.state()["key_string"], "A\u008C\u00FF");
    EXPECT_EQ(drive.state()["held_key"], 0);
    EXPECT_EQ(drive("key " + std::string(30, '3')), Json::parse(GOOD));
    EXPECT_EQ(drive.state()["key_string"], std::string(15, '3'));
    drive("tick");
    EXPECT_EQ(drive.state()["run_page"], 3);
    EXPECT_EQ(drive("type 57a"), Json::parse(GOOD));
    EXPECT_EQ(drive.state()["run_page"], 7);
    EXPECT_EQ(drive.state()["key_string"], "");
    EXPECT_EQ(drive.state()["blink_counter"], 7) << "two ticks a byte";
}

TEST(Drive, SetsOneFieldAndNoOther) {
    struct Row {
        const char* field;
        long long lowest;
        long long highest;
    };
    const Row rows[] = {
        {"wait_print_sc", 0, 100000},   {"wait_print_sc_ini", 0, 100000},
        {"timer_interval", 1, 1000},    {"cursor_interval", 0, 1000},
        {"ascii_mode", 0, 1},           {"pcm_beep", 0, 1},
        {"angle_unit", 0, 2},           {"set_e_digits", -1, 99},
        {"set_f_digits", -1, 99},       {"set_g_digits", 0, 18},
        {"beep_volume", 0, 10},         {"run_page", 0, 9},
        {"random_seed", 0, 4294967295},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field);
        Driven drive;
        Json before = drive.state();
        const auto set = [&](long long number) {
            return drive("set " + std::string(row.field) + " " + std::to_string(number))["ok"].get<bool>();
        };
        EXPECT_TRUE(set(row.lowest));
        EXPECT_TRUE(set(row.highest));
        EXPECT_FALSE(set(row.highest + 1));
        EXPECT_FALSE(set(row.lowest - 1));
        if (before.contains(row.field))
            before[row.field] = row.highest; // the others do not show in the state
        EXPECT_EQ(drive.state(), before);
    }
}

TEST(Drive, RefusesWhatItCannotDoAndChangesNothing) {
    const std::string long_key = "key " + std::string(32, '4');
    const std::string lines[] = {
        "hello|RUN| run|run now|run\tnow|stop 1|new 1|exe 1|state x|vars x|quit 0|-|tick\x80|\x01\xFF\x80",
        "tick x|tick -1|tick 10000001|tick 1 |tick  1|tick 1 2|tick +1|tick 0x1|tick 1.0|tick 99999999999999999999",
        "wait|wait x|wait -1|wait 10000001|page|page x|page -1|page 10|page 1 ",
        "set|set x 1|set run_page|set run_page x|set run_page 1 1|set RUN_PAGE 1|set run_page  1|set zoom 2",
        "set run_state 4|key|key 4|key 4g|key 414|key +141|key 41 42|" + long_key,
        "load|catalogue|catalogue /|catalogue /nowhere/x.ini|snapshot|snapshot /nowhere/x.bmp|lcd 1|sound 1",
        "soft|soft down|soft down 1|soft down 4 0|soft down 0 14|soft down -1 0|soft down 1 1 1|soft up 1",
        "soft left 1 1|soft down  1 1|soft DOWN 1 1|host|host 40000|host 40050|host x|host 40003 1|host -1",
        "click|click left|click left 1|click middle 1 1|click left x 1|click left 1 1 1|click left 1.5 1",
        "click left 99999999999 1|hold|hold Shift|unhold fn|press|press -1|press 256|altpress x|release 65 1",
    };
    Driven drive;
    drive.start("[P0]\n10 A=1\n20 PRINT 1\n");
    drive.all("tick; key 78; soft up");
    for (const std::string& row : lines) {
        std::istringstream commands(row);
        for (std::string line; std::getline(commands, line, '|');)
            drive.expect_refused(line);
    }
    EXPECT_FALSE(drive.session.finished);
}

TEST(Drive, SkipsEmptyLinesAndComments) {
    Driven drive;
    for (const char* line : {"", "\r", "#", "# run", "#\xFF"})
        EXPECT_TRUE(drive(line).is_null()) << line;
    EXPECT_EQ(drive("tick 2\r")["ticks"], 2);
    EXPECT_EQ(drive("\r\r")["ok"], false);
}

TEST(Drive, WritesNumbersThatReadBackTheSame) {
    const std::string huge = "9EX99*9EX99*9EX99*9EX99";
    Driven drive;
    drive.start("[P0]\n10 A=1/3:B=0.1+0.2:C=9EX99*10:D=1EM99*0.5:E=-2/3:F=9007199254740993:G=1EX15/7:Z(196)=5\n20 I=" +
                huge + ":J=0-" + huge + ":K=" + huge + "-" + huge + "\n");
    drive("tick 20");
    const Json vars = drive.vars();
    EXPECT_EQ(vars.at("A").get<double>(), 1.0 / 3);
    EXPECT_EQ(vars.at("B").get<double>(), 0.1 + 0.2);
    EXPECT_EQ(vars.at("C").get<double>(), 9e99 * 10);
    EXPECT_EQ(vars.at("D").get<double>(), 1e-99 * 0.5);
    EXPECT_EQ(vars.at("E").get<double>(), -2.0 / 3);
    EXPECT_EQ(vars.at("F").get<double>(), 9007199254740992.0);
    EXPECT_EQ(vars.at("G").get<double>(), 1e15 / 7);
    EXPECT_EQ(vars.at("196"), 5);
    EXPECT_EQ(vars.at("I"), "inf");
    EXPECT_EQ(vars.at("J"), "-inf");
    EXPECT_EQ(vars.at("K"), "nan");
}

TEST(Drive, WritesMachineTextByteForByte) {
    Driven drive;
    drive.start("[P0]\n10 A$=\"\\pi\xB1\\bx\":$=\"\\dg\":PRINT \"\\ci\xFF\t\\\\\"\n");
    drive("tick 3");
    EXPECT_EQ(drive.vars(), Json({{"A", "\u0087\u00B1\u0094"}, {"$", "\u008F"}}));
    const Json state = drive.state();
    EXPECT_EQ(state["display"], "\u0088\u00FF\t\\");
    EXPECT_EQ(state["visible"], "\u0088\u00FF\t\\        ");
}

TEST(Drive, AnswersTheSameEachTime) {
    const auto play = [] {
        Driven drive;
        std::string answers;
        drive.load("[P0]\n10 FOR I=1 TO 30:PRINT I*I/7;\n20 NEXT I\n");
        for (const char* line : {"run", "tick 500", "state", "exe", "vars", "state", "wait 10000", "state"})
            answers += *drive_line(drive.session, line) + "\n";
        return answers;
    };
    EXPECT_EQ(play(), play());
}

TEST(DriveProgram, AnswersLineByLineWhileItsInputIsOpen) {
    ChildProcess drive({"drive"});
    drive.write("tick 3\n# nothing\n\npage 4\n");
    const std::string first = "{\"ok\":true,\"ticks\":3}\n" + GOOD + "\n";
    EXPECT_EQ(drive.read(first.size()), first);
    drive.write("tick 1");
    const Outcome outcome = drive.finish(); // the last line needs no line feed
    EXPECT_EQ(outcome.out, "{\"ok\":true,\"ticks\":1}\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST(DriveProgram, EndsAtQuitAndAtTheEndOfItsInput) {
    const Outcome quit = run_program({"drive"}, "quit\ntick\n");
    EXPECT_EQ(quit.out, GOOD + "\n");
    EXPECT_EQ(quit.status, 0);
    const Outcome nothing = run_program({"drive"}, "");
    EXPECT_EQ(nothing.out, "");
    EXPECT_EQ(nothing.status, 0);
}

TEST(DriveProgram, AnswersLongAndBinaryLinesOnce) {
    // A line beyond the limit is refused whole: what it begins with must not be carried out.
    const std::string blanks(200000, ' ');
    std::string input = "page 3" + blanks + "\n" + "key " + std::string(200000, '4') + "\n" + "type " +
                        std::string(70000, '8') + "\n" + "#" + std::string(200000, '#') + "\n";
    input += std::string("ti\0ck\n", 6) + std::string("tick 1\0\n", 8) + "\xFF\xFE\x80\n" + "state\n";
    const Outcome outcome = run_program({"drive"}, input);
    std::vector<Json> answers;
    for (std::size_t begin = 0, end = 0; (end = outcome.out.find('\n', begin)) != std::string::npos; begin = end + 1)
        answers.push_back(Json::parse(outcome.out.substr(begin, end - begin)));
    ASSERT_EQ(answers.size(), 7U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(answers[i]["ok"], false) << i;
    EXPECT_EQ(answers[6]["run_page"], 0);
    EXPECT_EQ(answers[6]["blink_counter"], 0);
    EXPECT_EQ(outcome.status, 0);
}

TEST(DriveProgram, EndsQuietlyWhenNobodyReads) {
    ChildProcess drive({"drive"});
    drive.close_output();
    while (drive.write("state\n")) {
    }
    const Outcome outcome = drive.finish();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

} // namespace
} // namespace quillon::testing
