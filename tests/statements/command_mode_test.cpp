// SPDX-License-Identifier: MIT
// Command mode beyond the rows of command_lines.txt and dialogues.txt: the limits of the line editor, the clipboard, a
// stopped INPUT meanwhile, and a clean start.
#include "shell/commands.h"
#include "shell/key_queue.h"
#include "tests/statements/changes.h"
#include "tests/support/keyboard.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon::testing {
namespace {

struct CommandMode : public ::testing::Test, public CommandLine {
    void expect_entry(const std::string& text, std::size_t cursor) const {
        EXPECT_EQ(m.entry.entry_line.text.view(), text);
        EXPECT_EQ(static_cast<std::size_t>(m.screen.display_cursor), cursor) << text;
    }

    void press_all(const std::vector<int>& keys) {
        for (const int key : keys)
            press(*this, key);
    }
};

TEST_F(CommandMode, ShowsTheCursorAtOnceWithAKey) {
    type(*this, "A+B");
    press(*this, LEFT);
    m.screen.cursor_visible = false;
    m.screen.blink_counter = 7;
    tick();
    EXPECT_EQ(display(), "A+B");
    press(*this, LEFT);
    EXPECT_EQ(display(), "A_B");
}

TEST_F(CommandMode, StopsAt127Characters) {
    const std::string text(127, '7');
    type_at_once(*this, text + "89");
    press_all({RIGHT, INSERT});
    expect_entry(text, 127);
    press_all({LEFT, LEFT, INSERT, '1', '2', '3'});
    expect_entry(text.substr(2) + "12", 127);
    press(*this, BACKSPACE);
    expect_entry(text.substr(2) + "1", 126);
    EXPECT_EQ(m.screen.display_offset, 126 - 11);
}

TEST_F(CommandMode, AppliesAHeldKeyOnce) {
    KeyEvent key;
    key.key = 'A';
    for (int i = 0; i < 5; ++i) {
        push_key_event(simulator->keys, key);
        tick(5);
        key.auto_repeat = true;
    }
    expect_entry("A", 1);
    key.kind = KeyEvent::Kind::UP;
    push_key_event(simulator->keys, key);
    tick(2);
    type_at_once(*this, "AABB");
    expect_entry("AAABB", 5);
}

TEST_F(CommandMode, TypesWhatThereIsRoomForOfAWord) {
    m.settings.ascii_mode = false;
    type_at_once(*this, std::string(125, '1'));
    press(*this, 'A', SHIFT);
    expect_entry(std::string(125, '1') + "GO", 127);
}

TEST_F(CommandMode, PastesUpToTheFirstControlCharacter) {
    for (const std::string pasted : {"1+2|", "12|\r34", "|", "|\n1", "A\x7F|", "AB|\x87\x43", "123456789012345|"}) {
        std::string text = pasted;
        text.erase(text.find('|'), 1);
        simulator->around.host.paste_text = [&text] { return BoundedText<15>(text); };
        press(*this, 'V', CTRL);
        EXPECT_EQ(m.entry.entry_line.text.view(), pasted.substr(0, pasted.find('|'))) << pasted;
        press(*this, HOME);
    }
    type(*this, "ABCDE");
    press_all({LEFT, LEFT, LEFT});
    simulator->around.host.paste_text = [] { return BoundedText<15>("xy"); };
    press(*this, 'V', CTRL);
    expect_entry("ABxyE", 4);
}

TEST_F(CommandMode, CopiesTheEntryOrTheResult) {
    std::string copied;
    simulator->around.host.copy_text = [&copied](std::string_view text) { copied += std::string(text) + "/"; };
    type(*this, "2+3.50");
    press(*this, 'C', CTRL);
    expect_entry("2+3.50", 6);
    exe();
    press(*this, 'C', CTRL);
    expect_entry("", 0);
    enter(*this, "\"AB\"+\"CD\"");
    press(*this, 'C', CTRL);
    EXPECT_EQ(copied, "2+3.50/5.5/ABCD/");
}

TEST_F(CommandMode, LeavesAStoppedInputItsVariables) {
    for (const char* line : {"4", "PRINT 1", "D=1", "1/0", "INPUT D"}) {
        start("VAC:INPUT A,B\nC=1");
        wait();
        type(*this, "123"); // no part of the line that follows
        run_host_command(*simulator, COMMAND_STOP);
        press(*this, HOME);
        enter(*this, line);
        if (m.eval.stmt_kind == KIND_PROMPT)
            enter(*this, "9");
        else if (failed(m))
            press(*this, HOME);
        else if (m.run.run_state != STATE_COMMAND)
            exe();
        EXPECT_EQ(m.entry.history[0].view(), line);
        ASSERT_EQ(m.run.run_state, STATE_COMMAND) << line;
        for (const char* entry : {"", "5", "6"}) { // on with the program, and its two entries
            enter(*this, entry);
            wait();
        }
        EXPECT_TRUE(changes(m).starts_with(" A=5 B=6 C=1")) << line << ":" << changes(m);
    }
}

TEST_F(CommandMode, TheCommandLineCommandStartsClean) {
    for (const char* program : {"PRINT \"A TEXT THAT SCROLLS IN\"", "INPUT A", "STOP", "A=1/0", "PRINT:A=1",
                                "PRINT 1;2,3", "BEEPS 4,9,50", "FOR I=1 TO 2", "A=1:END:A=2", "COMMAND:A=2"}) {
        says("1");
        press(*this, UP);
        start(program);
        tick(3);
        run_host_command(*simulator, COMMAND_LINE);
        EXPECT_EQ(display(), "READY P0") << program;
        EXPECT_EQ(m.error.error_detail.view(), "") << program;
        EXPECT_EQ(m.entry.history_index, -1) << program;
        EXPECT_EQ(says("5"), "5") << program;
        exe();
        tick(3);
        EXPECT_EQ(m.run.run_state, STATE_COMMAND) << "nothing to go on with after " << program;
    }
}

} // namespace
} // namespace quillon::testing
