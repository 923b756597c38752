// SPDX-License-Identifier: MIT
// The error report: the text on the display, the detail with its location block, and the state that follows.
#include "core/errors.h"

#include "core/controls.h"
#include "shell/utf8.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon::testing {
namespace {

/// Plain texts for a few messages and for the location block.
MessageCatalogue plain_catalogue() {
    MessageCatalogue catalogue;
    catalogue.sections["SYSTEM"] = {{4, "Unknown"}, {5, "100%s of zero"}, {7, "日本語"}, {20, "Bad line"}};
    catalogue.sections["DLG_ERRINFO"] = {{1, "WHERE"}, {2, "AREA"}, {3, "INDEX"}, {4, "LINE"}, {5, "TEXT"}, {6, "<"}};
    return catalogue;
}

/// The location block of line `index` with this number in area 2, and its program text from the faulty token on.
std::string block(int index, int number, const std::string& text) {
    const std::string rule = "\r\n------------------------\r\n";
    return "\r\n\r\nWHERE\r\nAREA:2\r\nINDEX:" + std::to_string(index) + "\r\nLINE:\"" + std::to_string(number) +
           "\"\r\n\r\nTEXT" + rule + "::::" + text + "<" + rule;
}

class Errors : public ::testing::Test {
protected:
    TestMachine machine;
    Machine& m = machine.m;

    void run_area_2(std::string_view lines) {
        m.settings.run_page = 2;
        machine.start("[P2]\n" + std::string(lines));
        machine.tick(10);
    }
};

TEST_F(Errors, TheDetailEndsWithItsPlace) {
    machine.simulator->around.catalogue = plain_catalogue();
    const std::pair<std::string, std::string> rows[] = {
        {"10 A=1\n30 FOO 5\n", "Unknown:\"foo\"" + block(1, 30, "FOO 5")},
        {"10 A=1:  FOO:B=2\n", "Unknown:\"foo\"" + block(0, 10, "FOO:B=2")},
        {"10 A=1/0\n", "100%s of zero" + block(0, 10, "")},
        {"10 A=1/0:B=2\n", "100%s of zero" + block(0, 10, ":B=2")},
        {"10 A=1 MOD 2\r\n", "Unknown:0x000e (TOKEN_ID)" + block(0, 10, "MOD 2\r")},
        {"10 B=1.5.2+1\n", "日本語" + block(0, 10, "1.5.2+1")},
        {"10 A=1+Z(197)\n", " =Z(197)(MAX:222)" + block(0, 10, "Z(197)")},
        {"10 FOO 5678901234567890123456789012345\n",
         "Unknown:\"foo\"" + block(0, 10, "FOO 5678901234567890123456789012")},
        {"10 \xA0\\pi\x87\x83\x99\n", "Unknown:0x00a0 (TOKEN_ID)" + block(0, 10, "?\\pi\\pi\\ge?")},
        {"10 |" + std::string(40, 'x') + "\x87",
         "Unknown:0x007c (TOKEN_ID)" + block(0, 10, "|" + std::string(31, 'x'))},
    };
    for (const auto& [lines, detail] : rows) {
        run_area_2(lines);
        EXPECT_EQ(m.error.error_detail.view(), detail) << lines;
    }
}

TEST_F(Errors, ALongPathIsCutBetweenCharacters) {
    for (const int length : {0, 1, 2, 3}) {
        std::string path(static_cast<std::size_t>(length), 'a');
        for (int i = 0; i < 1000; ++i)
            path += "日";
        compose_system_message(m, MESSAGE_CANNOT_OPEN, ":[%s]", path.c_str());
        EXPECT_GT(m.error.system_message.size(), 2000U);
        EXPECT_TRUE(is_valid_utf8(m.error.system_message)) << length;
    }
}

TEST_F(Errors, AMissingCatalogueLeavesTheFixedParts) {
    machine.simulator->around.catalogue = {};
    run_area_2("10 FOO\n");
    EXPECT_EQ(m.error.error_detail.view(),
              ":\"foo\"\r\n\r\n\r\n:2\r\n:0\r\n:\"10\"\r\n\r\n\r\n------------------------\r\n::::FOO"
              "\r\n------------------------\r\n");
}

TEST_F(Errors, ACommandLineHasNoPlace) {
    machine.simulator->around.catalogue = plain_catalogue();
    m.run.run_state = STATE_COMMAND;
    EXPECT_EQ(outcome_of(m, "1/0"), "ERR3 100%s of zero");
    EXPECT_EQ(m.error.error_detail.view(), "100%s of zero");
    EXPECT_EQ(m.run.run_state, STATE_COMMAND_ERROR);
    EXPECT_EQ(machine.display(), "ERR3");
    EXPECT_EQ(m.run.prev_state, STATE_COMMAND);
}

TEST_F(Errors, TheDisplayNamesAreaAndLine) {
    const std::pair<const char*, const char*> rows[] = {
        {"10 A=1\n9999999 FOO\n", "ERR2 P2-9999999"},
        {"0 A=A(222)\n", "ERR6 P2-0"},
        {"10 PRINT \"TEXT\";:A=\n", "ERR2 P2-10"},
    };
    for (const auto& [lines, shown] : rows) {
        run_area_2(lines);
        EXPECT_EQ(machine.display(), shown) << lines;
        EXPECT_EQ(m.screen.display_cursor, static_cast<int>(std::string_view(shown).size()));
        EXPECT_EQ(std::pair(m.run.run_state, m.run.prev_state), std::pair(STATE_ENDED, STATE_RUN)) << lines;
    }
}

} // namespace
} // namespace quillon::testing
