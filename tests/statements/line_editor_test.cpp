// The line editor: its limits and the clipboard. What each key does, and the history, are in dialogues.txt.
#include "shell/key_queue.h"
#include "tests/support/keyboard.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon::testing {
namespace {

struct LineEditor : public ::testing::Test, public CommandLine {
    void expect_entry(const std::string& text, std::size_t cursor) const {
        EXPECT_EQ(m.entry_line.text.view(), text);
        EXPECT_EQ(static_cast<std::size_t>(m.display_cursor), cursor) << text;
    }

    void press_all(const std::vector<int>& keys) {
        for (const int key : keys)
            press(*this, key);
    }
};

TEST_F(LineEditor, ShowsTheCursorAtOnceWithAKey) {
    type(*this, "A+B");
    press(*this, LEFT);
    m.cursor_visible = 0;
    m.blink_counter = 7;
    tick();
    EXPECT_EQ(display(), "A+B");
    press(*this, LEFT);
    EXPECT_EQ(display(), "A_B");
}

TEST_F(LineEditor, StopsAt127Characters) {
    const std::string text(127, '7');
    type_at_once(*this, text + "89");
    press_all({RIGHT, INSERT});
    expect_entry(text, 127);
    press_all({LEFT, LEFT, INSERT, '1', '2', '3'});
    expect_entry(text.substr(2) + "12", 127);
    press(*this, BACKSPACE);
    expect_entry(text.substr(2) + "1", 126);
    EXPECT_EQ(m.display_offset, 126 - 11);
}

TEST_F(LineEditor, AppliesAHeldKeyOnce) {
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

TEST_F(LineEditor, TypesWhatThereIsRoomForOfAWord) {
    m.ascii_mode = 0;
    type_at_once(*this, std::string(125, '1'));
    press(*this, 'A', SHIFT);
    expect_entry(std::string(125, '1') + "GO", 127);
}

TEST_F(LineEditor, PastesUpToTheFirstControlCharacter) {
    for (const std::string pasted : {"1+2|", "12|\r34", "|", "|\n1", "A\x7F|", "AB|\x87\x43", "123456789012345|"}) {
        std::string text = pasted;
        text.erase(text.find('|'), 1);
        m.host.paste_text = [&text] { return BoundedText<15>(text); };
        press(*this, 'V', CTRL);
        EXPECT_EQ(m.entry_line.text.view(), pasted.substr(0, pasted.find('|'))) << pasted;
        press(*this, HOME);
    }
    type(*this, "ABCDE");
    press_all({LEFT, LEFT, LEFT});
    m.host.paste_text = [] { return BoundedText<15>("xy"); };
    press(*this, 'V', CTRL);
    expect_entry("ABxyE", 4);
}

TEST_F(LineEditor, CopiesTheEntryOrTheResult) {
    std::string copied;
    m.host.copy_text = [&copied](std::string_view text) { copied += std::string(text) + "/"; };
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

} // namespace
} // namespace quillon::testing
