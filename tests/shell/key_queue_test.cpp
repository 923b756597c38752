// Typing faster than the machine ticks: every key through the queue and simulator_tick, at the prompt of INPUT, on the
// command line and with KEY$ (key_queue.txt). The test makes the ticks, so "between two ticks" is what it says.
#include "core/charset.h"
#include "tests/support/cases_file.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"

#include "shell/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace quillon::testing {
namespace {

constexpr Modifiers ALT{.alt = true};

/// Somebody at a keyboard. The modifiers of each event are those of its moment, as a window sends them.
struct Typist : TestMachine {
    explicit Typist(std::string_view program = "END", bool ascii_mode = true) {
        m.ascii_mode = ascii_mode ? 1 : 0;
        start(program);
        tick(2);
    }
    void down(int key, Modifiers modifiers = NONE, bool auto_repeat = false) {
        push_key_event(simulator->keys, {.kind = modifiers.alt ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN,
                                         .key = key,
                                         .auto_repeat = auto_repeat,
                                         .modifiers = modifiers});
    }
    void up(int key) { push_key_event(simulator->keys, {.kind = KeyEvent::Kind::UP, .key = key}); }
    void tap(int key, Modifiers modifiers = NONE) {
        down(key, modifiers);
        up(key);
    }
    /// Taps keys of main letters and digits; "\n" is Enter, "=" the shifted key that types it, "$" the clear key.
    void tap_all(std::string_view keys) {
        for (const char key : keys)
            tap(key == '\n' ? ENTER : key == '=' ? 189 : key == '$' ? HOME : key, key == '=' ? SHIFT : NONE);
    }
    /// Taps keys by their names in the file of cases.
    void tap_named(const std::string& names) {
        std::istringstream words(names);
        for (std::string word; words >> word;) {
            const auto has = [&word](const char* modifier) { return word.find(modifier) != std::string::npos; };
            const std::string key = word.substr(word.rfind('-') + 1);
            tap(key.size() == 1 ? key[0] : std::stoi(key),
                {.shift = has("shift"), .ctrl = has("ctrl"), .alt = has("alt")});
        }
    }
    /// Ticks until everything has been fed, and a few more.
    void settle() {
        for (int i = 0; i < 2000 && !simulator->keys.events.empty(); ++i)
            tick();
        tick(4);
        EXPECT_TRUE(simulator->keys.events.empty());
        EXPECT_TRUE(m.key_string.empty()) << "every key is up again";
    }
    void enter_command_mode() {
        run_host_command(*simulator, COMMAND_LINE);
        exe();
        ASSERT_EQ(m.run_state, STATE_COMMAND);
    }
    [[nodiscard]] std::string entry() const { return std::string(m.entry_line.text); }
};

std::string between_bars(const std::string& text) {
    char escaped[64];
    return "|" + std::string(escape_text(text, escaped, sizeof escaped)) + "|";
}

std::string entry_of(const FileCase& row) {
    std::string entries[2];
    for (const bool input : {false, true}) {
        Typist t("INPUT A$", row.heading == "ASCII mode");
        if (!input)
            t.enter_command_mode();
        t.tap_named(row.input);
        t.settle();
        EXPECT_EQ(t.m.run_state, input ? STATE_INPUT : STATE_COMMAND);
        entries[input ? 1 : 0] = between_bars(t.entry());
    }
    return entries[0] == entries[1] ? entries[0] : entries[0] + " but at the prompt " + entries[1];
}

/// What KEY$ reads in twelve ticks: the same again is told once.
std::string read_by_key(const FileCase& row) {
    std::string reader = "B=1\nA$=\"\"\n";
    for (int i = 0; i < 12; ++i)
        reader += "A$=A$+KEY$\n";
    Typist t(reader + "END");
    t.tap_named(row.input);
    t.tick(12);
    std::string seen(cell(t, 'A').text);
    EXPECT_LE(std::ssize(seen), 2 + 2 * std::count(row.input.begin(), row.input.end(), ' '))
        << "a tap is over with the tick behind it";
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    return between_bars(seen);
}

/// What stands at the end when lines are typed in one go, and when somebody waits after each.
std::string shown_after_lines(const FileCase& row) {
    const std::size_t end = row.input.find(" < ");
    const std::string program = end == std::string::npos ? "" : row.input.substr(0, end);
    std::set<std::string> shown;
    for (const bool waits : {true, false}) {
        Typist t(program.empty() ? "END" : program);
        if (program.empty())
            run_host_command(*t.simulator, COMMAND_LINE);
        std::istringstream lines(row.input.substr(end == std::string::npos ? 0 : end + 3));
        for (std::string line; std::getline(lines, line, ';');) {
            t.tap_all(line + "\n");
            if (waits)
                t.settle();
        }
        t.settle();
        shown.insert(t.display());
    }
    return *shown.begin() + (shown.size() > 1 ? " or else " + *shown.rbegin() : "");
}

TEST(KeyQueue, LosesNothing) {
    expect_cases("shell/key_queue.txt", {{"ASCII mode", entry_of},
                                         {"machine keyboard", entry_of},
                                         {"KEY$", read_by_key},
                                         {"lines", shown_after_lines}});
}

TEST(KeyQueue, TakesAHeldEnterOnce) {
    Typist held("PRINT 1,2,3,4,5");
    held.wait();
    held.down(ENTER);
    for (int i = 0; i < 10; ++i) {
        held.down(ENTER, NONE, true);
        held.tick();
    }
    EXPECT_EQ(held.visible(), " 2          ") << "held down it is one";
    held.up(ENTER);
    held.tap(ENTER);
    held.settle();
    EXPECT_EQ(held.visible(), " 3          ");
}

TEST(KeyQueue, TakesModifiersOfTheMomentNotOfTheTick) {
    for (const bool shift_first : {true, false}) {
        Typist t;
        t.enter_command_mode();
        t.tap('A', shift_first ? SHIFT : NONE);
        t.simulator->modifiers = shift_first ? NONE : SHIFT; // released early, or pressed for the next letter
        t.tap('B', shift_first ? NONE : SHIFT);
        t.settle();
        EXPECT_EQ(t.entry(), shift_first ? "aB" : "Ab");
        EXPECT_EQ(t.m.shift_flag, shift_first ? 0 : 1) << "without a key those of now are shown";
    }
    Typist t;
    t.simulator->modifiers = {.shift = true, .ctrl = true, .alt = true};
    t.tick();
    EXPECT_EQ(t.m.shift_flag + t.m.ctrl_flag + t.m.alt_flag, 3);
    t.simulator->modifiers = {};
    t.m.soft_shift_latch = 1;
    t.tick();
    EXPECT_EQ(t.m.shift_flag * 100 + t.m.ctrl_flag * 10 + t.m.alt_flag, 100) << "a latch counts as a key";
}

TEST(KeyQueue, FeedsOneKeyATickAndTypesAHeldOneOnce) {
    Typist t;
    t.enter_command_mode();
    t.tap_all("AB");
    t.down('C');
    for (const char* entry : {"A", "AB", "ABC", "ABC", "ABC"}) {
        t.tick();
        EXPECT_EQ(t.entry(), entry);
    }
    EXPECT_EQ(t.m.key_string.view(), "C") << "held still";
    t.tap('D'); // while C is held
    t.tick(3);
    for (int i = 0; i < 20; ++i)
        t.down('C', NONE, true); // repeats between two ticks
    t.up('C');
    t.tap('C');
    t.settle();
    EXPECT_EQ(t.entry().substr(0, 4), "ABCD");
    EXPECT_EQ(t.entry().back(), 'C');
    EXPECT_LE(t.entry().size(), 6U) << "the repeats of one hold are one key";
}

TEST(KeyQueue, StaysSmallInAStorm) {
    Typist t;
    t.enter_command_mode();
    const auto expect_small = [&t] {
        ASSERT_LE(t.simulator->keys.events.size(), 1000U);
        ASSERT_LE(t.simulator->keys.down_keys.size(), 512U);
    };
    for (int i = 0; i < 50'000; ++i) {
        t.tap('A' + i % 26);
        expect_small();
    }
    t.settle();
    EXPECT_EQ(t.entry().substr(0, 26), "ABCDEFGHIJKLMNOPQRSTUVWXYZ") << "what had room is typed in order";
    for (int i = 0; i < 50'000; ++i) {
        const int key = i % 512 == ENTER ? 'A' : i % 512; // any code, most of them never released
        t.down(key, i % 7 == 0 ? ALT : NONE, i % 3 == 0);
        if (i % 50 == 0)
            t.tick();
        expect_small();
    }
    release_all_keys(t.simulator->keys);
    t.settle();
    EXPECT_TRUE(t.simulator->keys.down_keys.empty());
    t.enter_command_mode(); // the storm had function keys
    t.tap_all("OK");
    t.settle();
    EXPECT_EQ(t.entry(), "OK");
}

TEST(KeyQueue, LetsAllKeysComeUpWithTheFocus) {
    Typist t("INPUT A$");
    t.tap_all("11");
    t.down('2');
    t.down('3');
    release_all_keys(t.simulator->keys);
    t.settle();
    EXPECT_EQ(t.entry(), "1123") << "what was typed before the loss counts";
    EXPECT_FALSE(is_key_down(t.simulator->keys, '2') || is_key_down(t.simulator->keys, '3'));
    t.tap('3'); // and it may go down anew
    t.settle();
    EXPECT_EQ(t.entry(), "11233");
}

} // namespace
} // namespace quillon::testing
