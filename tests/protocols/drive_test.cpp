// SPDX-License-Identifier: MIT
// The driving protocol as a program, and how it takes and writes texts. Its commands: transcripts/drive.drv.
#include "tests/protocols/driven.h"
#include "tests/support/child_process.h"

#include <sstream>

namespace quillon::testing {
namespace {

const std::string GOOD = R"({"ok":true})";

TEST(Drive, RefusesOddBytesAndSkipsEmptyLinesAndComments) {
    Driven drive;
    const Json before = drive.state();
    for (const std::string& line :
         {std::string("\r\r"), std::string(" run"), std::string("run\tnow"), std::string("tick\x80"),
          std::string("\x01\xFF\x80"), std::string("tick 1 "), "key " + std::string(32, '4')}) {
        EXPECT_EQ(drive(line)["ok"], false) << line;
        EXPECT_EQ(drive.state(), before) << line;
    }
    for (const char* line : {"", "\r", "#", "# run", "#\xFF"})
        EXPECT_TRUE(drive(line).is_null()) << line;
    EXPECT_EQ(drive("tick 2\r")["ticks"], 2);
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
    EXPECT_EQ(outcome.out + outcome.err + std::to_string(outcome.status), "{\"ok\":true,\"ticks\":1}\n0");
    EXPECT_EQ(run_program({"drive"}, "quit\ntick\n").out, GOOD + "\n");
}

TEST(DriveProgram, AnswersLongAndBinaryLinesOnce) {
    // A line beyond the limit is refused whole: what it begins with must not be carried out.
    const auto many = [](char c, std::size_t count = 200000) { return std::string(count, c) + "\n"; };
    const Outcome outcome = run_program({"drive"}, "page 3" + many(' ') + "key " + many('4') + "type " +
                                                       many('8', 70000) + "#" + many('#') + std::string("ti\0ck\n", 6) +
                                                       std::string("tick 1\0\n", 8) + "\xFF\xFE\x80\n" + "state\n");
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
    EXPECT_EQ(outcome.err + std::to_string(outcome.status), "0");
}

} // namespace
} // namespace quillon::testing
