// SPDX-License-Identifier: MIT
// What windows around the LCD take and tell: the ranges of the configuration dialog, and the LCD as text.
#include "shell/commands.h"
#include "shell/configuration.h"
#include "shell/lcd_text.h"
#include "shell/skins.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quillon::testing {
namespace {

TEST(ConfigurationDialog, TakesTheDefaultForWhatIsOutOfRange) {
    using Row = std::tuple<int Configuration::*, int Settings::*, int, int, int>; // lowest, highest, default
    for (const auto& [field, setting, lowest, highest, fallback] :
         {Row{&Configuration::set_e_digits, &Settings::set_e_digits, -1, 8, -1},
          {&Configuration::set_f_digits, &Settings::set_f_digits, -1, 9, -1},
          {&Configuration::set_g_digits, &Settings::set_g_digits, 0, 18, 9},
          {&Configuration::beep_volume, &Settings::beep_volume, 0, 10, 10},
          {&Configuration::timer_interval, &Settings::timer_interval, 5, 1000, 30}}) {
        for (const int number : {lowest - 1, lowest, highest, highest + 1}) {
            TestMachine t;
            Configuration fields = begin_configuration(*t.simulator);
            fields.*field = number;
            const bool is_raised = number == 4; // an interval: the lowest is near enough
            const bool is_taken = number >= lowest && number <= highest;
            EXPECT_EQ(accept_configuration(*t.simulator, fields).size(), is_taken || is_raised ? 0U : 1U) << number;
            EXPECT_EQ(t.m.settings.*setting, is_taken ? number : is_raised ? 5 : fallback) << number;
        }
    }
}

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
