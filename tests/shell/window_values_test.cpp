// SPDX-License-Identifier: MIT
// The LCD as text, for those who do not look at it.
#include "shell/commands.h"
#include "shell/lcd_text.h"
#include "shell/skins.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(LcdText, StandsStillWhereTheLcdBlinks) {
    TestMachine t;
    ASSERT_TRUE(load_skin(*t.simulator, {}));
    t.load("[P0]\n10 INPUT A\n[P3]\n10 A=1\n");
    for (int phase = 0; phase < 40; ++phase) {
        t.tick();
        ASSERT_EQ(lcd_text(*t.simulator), "P _12_456789") << phase;
    }
    EXPECT_EQ(lcd_indicator_text(*t.simulator), "WRT DEG");
    run_host_command(*t.simulator, COMMAND_LINE);
    t.exe();
    for (const char key : {'4', '\x87'}) {
        t.m.keys.key_string.assign({&key, 1});
        t.tick();
        t.m.keys.key_string.clear();
        t.tick(2);
    }
    for (int phase = 0; phase < 40; ++phase) {
        t.tick();
        ASSERT_EQ(lcd_text(*t.simulator), "4π          ") << phase;
    }
}

} // namespace
} // namespace quillon::testing
