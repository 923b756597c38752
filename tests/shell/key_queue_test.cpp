// SPDX-License-Identifier: MIT
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
        m.settings.ascii_mode = ascii_mode ? 1 : 0;
        start(program);
        tick(2);
    }
    void down(int key, Modifiers modifiers = NONE, bool auto_repeat = false) {
        push_key_event(simulator->keys, {.kind = modifiers.alt ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN,
                                         .key = key,
                                         .auto_repeat = auto_repeat,
                                         .modifiers = modifiers});
    }
    void tap(int key, Modifiers modifiers = NONE) {
        down(key, modifiers);
        push_key_event(simulator->keys, {.kind = KeyEvent::Kind::UP, .key = key});
    }
    /// Taps keys of main letters and digits; "\n" is Enter, "=" the shifted key that types it, "$" the clear key.
    void tap_all(std::string_view keys) {
        for (const char key : keys)
            tap(key == '\n' ? ENTER : key == '=' ? 189 : key == '$' ? HOME : key, key == '=' ? SHIFT : NONE);
    }
    /// Does what a word in the file of cases says.
    void play_word(const std::string& word) {
        const auto has = [&word](const char* part) { return word.find(part) != std::string::npos; };
        const Modifiers modifiers{.shift = has("shift"), .ctrl = has("ctrl"), .alt = has("alt")};
        const std::string name = word.substr(word.rfind('-') + 1);
        const auto key = [&name] { return name.size() == 1 ? name[0] : std::stoi(name); };
        if (word[0] == '.')
            tick(static_cast<int>(word.size()));
        else if (word == "lost")
            release_all_keys(simulator->keys);
        else if (word == "latch")
            m.soft.soft_shift_latch = true;
        else if (has("now"))
            simulator->modifiers = modifiers;
        else if (has("down") || has("again"))
            down(key(), modifiers, has("again"));
        else if (has("up"))
            push_key_event(simulator->keys, {.kind = KeyEvent::Kind::UP, .key = key()});
        else
            tap(key(), modifiers);
    }
    /// Plays a script; a number and "*" before a word repeats it.
    void play_all(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            const std::size_t star = word.find('*');
            for (int i = star == std::string::npos ? 1 : std::stoi(word); i > 0; --i)
                play_word(word.substr(star + 1));
        }
    }
    /// Ticks until everything has been fed, and a few more.
    void settle() {
        for (int i = 0; i < 2000 && !simulator->keys.events.empty(); ++i)
            tick();
        tick(4);
        EXPECT_TRUE(simulator->keys.events.empty());
        EXPECT_TRUE(m.keys.key_string.empty()) << "every key is up again";
    }
    void enter_command_mode() {
        run_host_command(*simulator, COMMAND_LINE);
        exe();
        ASSERT_EQ(m.run.run_state, STATE_COMMAND);
    }
    [[nodiscard]] std::string entry() const { return std::string(m.entry.entry_line.text); }
};

std::string between_bars(const std::string& text) {
    char escaped[64];
    return "|" + std::string(escape_text(text, escaped, sizeof escaped)) + "|";
}

/// The program before " < ", empty where there is none, and what is typed.
std::pair<std::string, std::string> program_and_keys(const std::string& input) {
    const std::size_t end = input.find(" < ");
    return end == std::string::npos ? std::pair(std::string(), input)
                                    : std::pair(input.substr(0, end), input.substr(end + 3));
}

std::string entry_of(const FileCase& row) {
    std::string entries[2];
    for (const bool input : {false, true}) {
        Typist t("INPUT A$", row.heading == "ASCII mode");
        if (!input)
            t.enter_command_mode();
        t.play_all(row.input);
        t.settle();
        EXPECT_EQ(t.m.run.run_state, input ? STATE_INPUT : STATE_COMMAND);
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
    t.play_all(row.input);
    t.tick(12);
    std::string seen(cell(t, 'A').text);
    EXPECT_LE(std::ssize(seen), 2 + 2 * std::count(row.input.begin(), row.input.end(), ' '))
        << "a tap is over with the tick behind it";
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    return between_bars(seen);
}

/// What stands at the end when lines are typed in one go, and when somebody waits after each.
std::string shown_after_lines(const FileCase& row) {
    const auto [program, keys] = program_and_keys(row.input);
    std::set<std::string> shown;
    for (const bool waits : {true, false}) {
        Typist t(program.empty() ? "END" : program);
        if (program.empty())
            run_host_command(*t.simulator, COMMAND_LINE);
        std::istringstream lines(keys);
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

/// What stands on the line or the display at each "?" and at the end, with the modifiers that the machine sees.
std::string seen_on_the_way(const FileCase& row) {
    const auto [program, keys] = program_and_keys(row.input);
    Typist t(program.empty() ? "END" : program);
    if (program.empty())
        t.enter_command_mode();
    else
        t.wait();
    std::string seen, script = keys + "?";
    for (std::size_t mark = 0; (mark = script.find('?')) != std::string::npos; script.erase(0, mark + 1)) {
        t.play_all(script.substr(0, mark));
        if (mark + 1 == script.size())
            t.settle();
        seen += (seen.empty() ? "" : " ") + (t.entry().empty() ? t.display() : t.entry()) +
                (t.m.keys.key_string.empty() ? "" : "+");
    }
    return seen + (t.m.keys.shift_flag ? " shift" : "") + (t.m.keys.ctrl_flag ? " ctrl" : "") +
           (t.m.keys.alt_flag ? " alt" : "");
}

TEST(KeyQueue, LosesNothing) {
    expect_cases("shell/key_queue.txt", {{"ASCII mode", entry_of},
                                         {"machine keyboard", entry_of},
                                         {"KEY$", read_by_key},
                                         {"lines", shown_after_lines},
                                         {"one after another", seen_on_the_way}});
}

TEST(KeyQueue, LetsStopThroughAToneAndKeepsWhatIsTyped) {
    for (const bool stops : {true, false}) {
        Typist t("BEEPS 4,9,3000:BEEPWAIT\nINPUT A$\nGOTO 30");
        t.tick(2);
        t.tap_all("AAB");
        if (stops)
            t.tap(27);
        t.tick(6);
        EXPECT_EQ(t.m.run.run_state, stops ? STATE_STOPPED : STATE_RUN);
        EXPECT_EQ(t.m.sound.sound_holds_run, 1);
        t.tick(150);
        EXPECT_EQ(t.entry(), stops ? "" : "AAB");
    }
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

} // namespace
} // namespace quillon::testing
