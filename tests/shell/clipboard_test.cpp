// What goes to the clipboard and what is taken from it, and the keys that do it.
#include "shell/clipboard.h"

#include "shell/commands.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Clipboard, TakesTheFirst1024Characters) {
    for (const std::size_t length : {0U, 1U, 1024U, 1025U, 2000U})
        EXPECT_EQ(clipboard_part(std::string(length, '\x87')).size(), std::min<std::size_t>(length, 1024));
}

TEST(Clipboard, GivesWhatALineCanTake) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"", ""},
        {"AB\r\nC", "AB\rC"},
        {std::string_view("AB\0CD", 5), "AB"},
        {"\x83\x41\x83\x42", "AB"}, // double-byte text goes byte by byte
        {"123456789012345", "123456789012345"},
        {"1234567890123456", "123456789012345"},
        {"\n\n\n\n\n\n\n\n\n\n\n\n\nABC", "AB"}, // fifteen bytes are read, not fifteen taken over
        {"\t\x1F\x7F", "\t\x1F\x7F"},
    };
    for (const auto& [on_clipboard, pasted] : rows)
        EXPECT_EQ(pasted_part(on_clipboard).view(), pasted) << ::testing::PrintToString(on_clipboard);
}

TEST(Clipboard, IsPastedAtTheCursorUpToAControlCharacter) {
    TestMachine t;
    std::string on_clipboard;
    t.m.host.paste_text = [&on_clipboard] { return pasted_part(on_clipboard); };
    run_host_command(*t.simulator, COMMAND_LINE);
    t.exe();
    const std::pair<const char*, const char*> rows[] = {
        {"CD", "ACD"}, {"", "AB"}, {"\r\nX", "AB"}, {"C\rD", "AC"}, {"1234567890123456", "A123456789012345"},
    };
    for (const auto& [text, entry] : rows) {
        on_clipboard = text;
        play(t, "\x06 A B \x01 \x0A"); // what is pasted takes the place of the B
        EXPECT_EQ(t.m.entry_line.text.view(), entry);
    }
}

} // namespace
} // namespace quillon::testing
