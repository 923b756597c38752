// SPDX-License-Identifier: MIT
// The key queue in a storm of keys. What it makes of those that somebody may type: transcripts/keys.drv.
#include "tests/support/test_machine.h"

#include "keys/virtual_keys.h"
#include "shell/commands.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

void push(TestMachine& t, const KeyEvent& event) { push_key_event(t.simulator->keys, event); }

void tap(TestMachine& t, int key) {
    push(t, {.kind = KeyEvent::Kind::DOWN, .key = key});
    push(t, {.kind = KeyEvent::Kind::UP, .key = key});
}

void begin_command_line(TestMachine& t) {
    run_host_command(*t.simulator, COMMAND_LINE);
    t.exe();
}

/// The line that is typed once everything has been fed.
std::string settled_line(TestMachine& t) {
    for (int i = 0; i < 2000 && !t.simulator->keys.events.empty(); ++i)
        t.tick();
    t.tick(4);
    EXPECT_TRUE(t.simulator->keys.events.empty());
    EXPECT_TRUE(t.m.keys.key_string.empty()) << "every key is up again";
    return std::string(t.m.entry.entry_line.text);
}

TEST(KeyQueue, StaysSmallInAStorm) {
    TestMachine t;
    begin_command_line(t);
    const auto expect_small = [&t] {
        ASSERT_LE(t.simulator->keys.events.size(), 1000U);
        ASSERT_LE(t.simulator->keys.down_keys.size(), 512U);
    };
    for (int i = 0; i < 50'000; ++i) {
        tap(t, 'A' + i % 26);
        expect_small();
    }
    EXPECT_EQ(settled_line(t).substr(0, 26), "ABCDEFGHIJKLMNOPQRSTUVWXYZ") << "what had room is typed in order";
    for (int i = 0; i < 50'000; ++i) {
        const int key = i % 512 == VK_ENTER ? 'A' : i % 512; // any code, most of them never released
        push(t, {.kind = i % 7 == 0 ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN,
                 .key = key,
                 .auto_repeat = i % 3 == 0,
                 .modifiers = {.alt = i % 7 == 0}});
        if (i % 50 == 0)
            t.tick();
        expect_small();
    }
    release_all_keys(t.simulator->keys);
    settled_line(t);
    EXPECT_TRUE(t.simulator->keys.down_keys.empty());
    begin_command_line(t); // the storm had function keys
    tap(t, 'O');
    tap(t, 'K');
    EXPECT_EQ(settled_line(t), "OK");
}

} // namespace
} // namespace quillon::testing
