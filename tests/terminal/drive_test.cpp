// The driving protocol: its commands (drive.txt), its refusals, and how it writes texts.
#include "tests/support/cases_file.h"
#include "tests/support/child_process.h"
#include "tests/terminal/driven.h"

#include <sstream>

namespace quillon::testing {
namespace {

const std::string GOOD = R"({"ok":true})";

/// Drives through a file of cases, with a new machine for each heading.
struct Sessions {
    std::unique_ptr<Driven> drive;
    std::string heading;

    void begin(const std::string& title) {
        drive = std::make_unique<Driven>();
        heading = title;
        if (const std::size_t listing = title.find('['); listing != std::string::npos) {
            EXPECT_EQ(drive->load(title.substr(listing) + "\n")["loaded"], true) << title;
        }
    }
    /// The values of fields of the state, with a blank between them.
    [[nodiscard]] std::string see(const std::string& fields) const {
        const Json state = drive->state();
        std::istringstream names(fields);
        std::string values;
        for (std::string name; names >> name;)
            values += (values.empty() ? "" : " ") + state.at(name).dump(-1, ' ', true);
        return values;
    }
    std::string outcome_of(const FileCase& row) {
        if (row.heading != heading)
            begin(row.heading);
        const std::size_t end = row.input.rfind("; ");
        const std::string last = row.input.substr(end == std::string::npos ? 0 : end + 2);
        if (end != std::string::npos)
            drive->all(row.input.substr(0, end));
        if (last.starts_with("see "))
            return see(last.substr(4));
        if (last.starts_with("changes "))
            return drive->changed_by(last.substr(8));
        Json answer = (*drive)(last);
        const bool ok = answer["ok"];
        answer.erase("ok");
        answer.erase("crc32"); // drive_picture_test.cpp
        return ok ? answer.dump(-1, ' ', true) : "refused";
    }
};

TEST(Drive, DoesWhatItIsTold) {
    Sessions sessions;
    expect_cases("terminal/drive.txt", [&](const FileCase& row) { return sessions.outcome_of(row); });
}

TEST(Drive, NewForgetsEverything) {
    Driven drive;
    const Json fresh = drive.state();
    const TemporaryFile catalogue("[SYSTEM]\nM_005=DIV\n");
    const TemporaryFile listing("[P0]\n10 A=1:B$=\"X\":FOR I=1 TO 9:PRINT 1/0\n");
    drive.all("catalogue " + catalogue.path + "; load " + listing.path + "; run; set random_seed 99");
    drive.all("set wait_print_sc 3; set cursor_interval 1; key 41; page 7; tick 9; new");
    EXPECT_EQ(drive.state(), fresh);
    drive.all("load " + listing.path + "; run; tick 9");
    EXPECT_EQ(drive.state()["error_detail"].get<std::string>().find("DIV"), std::string::npos);
}

TEST(Drive, LoadsListings) {
    Driven drive;
    drive("set random_seed 7");
    const std::string missing = "/nowhere/a \xE3\x82\xA1.bas";
    const Json refused = {{"ok", true}, {"loaded", false}, {"system_message", ":[" + missing + "]"}};
    EXPECT_EQ(drive("load " + missing), refused);
    EXPECT_EQ(drive.state()["random_seed"], 7) << "nothing has changed";
    const Json loaded = {{"ok", true}, {"loaded", true}, {"system_message", refused["system_message"]}};
    EXPECT_EQ(drive.load("[P0]\n10 A=1\n"), loaded);
    EXPECT_EQ(drive.state()["random_seed"], 1);
    const TemporaryFile catalogue("[SYSTEM]\nM_027=\x8F\x87\n");
    drive.all("catalogue " + catalogue.path + "; state");
    const Json faulty = {{"ok", true}, {"loaded", false}, {"system_message", "\u9806:3 LINE"}};
    EXPECT_EQ(drive.load("[P0]\n20 A=1\n10 B=1\n"), faulty);
    EXPECT_EQ(drive.state()["host"], Json({"message-box \u9806:3 LINE"}));
    EXPECT_EQ(drive.state()["host"], Json::array()) << "told once";
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
        "\r\r",
    };
    Driven drive;
    drive.load("[P0]\n10 A=1\n20 PRINT 1\n");
    drive.all("run; tick; key 78; soft up; state");
    const Json before = drive.state();
    for (const std::string& row : lines) {
        std::istringstream commands(row);
        for (std::string line; std::getline(commands, line, '|');) {
            const Json answer = drive(line);
            EXPECT_EQ(answer["ok"], false) << line;
            EXPECT_TRUE(answer.size() == 2 && answer["error"].is_string()) << line << ": " << answer;
            EXPECT_EQ(drive.state(), before) << line;
        }
    }
    EXPECT_FALSE(drive.session.finished);
}

TEST(Drive, SkipsEmptyLinesAndComments) {
    Driven drive;
    for (const char* line : {"", "\r", "#", "# run", "#\xFF"})
        EXPECT_TRUE(drive(line).is_null()) << line;
    EXPECT_EQ(drive("tick 2\r")["ticks"], 2);
}

TEST(Drive, WritesMachineTextByteForByte) {
    Driven drive;
    drive.load("[P0]\n10 A$=\"\\pi\xB1\\bx\":$=\"\\dg\":PRINT \"\\ci\xFF\t\\\\\"\n");
    EXPECT_EQ(drive.all("run; tick 3; vars")["vars"], Json({{"A", "\u0087\u00B1\u0094"}, {"$", "\u008F"}}));
    EXPECT_EQ(drive.state()["visible"], "\u0088\u00FF\t\\        ");
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
    EXPECT_EQ(run_program({"drive"}, "quit\ntick\n").out, GOOD + "\n");
}

TEST(DriveProgram, AnswersLongAndBinaryLinesOnce) {
    // A line beyond the limit is refused whole: what it begins with must not be carried out.
    const std::string blanks(200000, ' ');
    std::string input = "page 3" + blanks + "\n" + "key " + std::string(200000, '4') + "\n" + "type " +
                        std::string(70000, '8') + "\n" + "#" + std::string(200000, '#') + "\n";
    input += std::string("ti\0ck\n", 6) + std::string("tick 1\0\n", 8) + "\xFF\xFE\x80\n" + "state\n";
    const Outcome outcome = run_program({"drive"}, input);
    std::istringstream answers(outcome.out);
    std::string line;
    for (int refused = 0; refused < 6; ++refused) {
        std::getline(answers, line);
        EXPECT_EQ(Json::parse(line)["ok"], false) << line;
    }
    std::getline(answers, line);
    EXPECT_EQ(Json::parse(line)["run_page"], 0);
    EXPECT_EQ(Json::parse(line)["blink_counter"], 0);
    EXPECT_FALSE(std::getline(answers, line));
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
