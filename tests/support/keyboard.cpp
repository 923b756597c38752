// Keys.
#include "tests/support/keyboard.h"

#include "keys/key_map.h"
#include "shell/commands.h"
#include "shell/key_queue.h"
#include "tests/support/evaluation.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr int TICKS_MAX = 2000; ///< for what has to end

void push_key(TestMachine& t, KeyEvent event) {
    push_key_event(t.simulator->keys, event);
    event.kind = KeyEvent::Kind::UP;
    push_key_event(t.simulator->keys, event);
}

/// Ticks until all keys have been fed, and once more without one.
void feed(TestMachine& t) {
    for (int i = 0; i < TICKS_MAX && !t.simulator->keys.events.empty(); ++i)
        t.tick();
    t.tick();
}

} // namespace

void press(TestMachine& t, int key, Modifiers modifiers) {
    KeyEvent event;
    event.key = key;
    event.modifiers = modifiers;
    push_key(t, event);
    feed(t);
}

void type(TestMachine& t, std::string_view text) {
    for (const char c : text)
        type_at_once(t, std::string_view(&c, 1));
}

void type_at_once(TestMachine& t, std::string_view text) {
    for (const char c : text) {
        KeyEvent event;
        event.kind = c == '\n' ? KeyEvent::Kind::DOWN : KeyEvent::Kind::CHARACTER;
        event.key = c == '\n' ? ENTER : CHARACTER_KEY_BASE + static_cast<unsigned char>(c);
        event.character = c;
        event.modifiers.shift = c >= 'a' && c <= 'z';
        push_key(t, event);
    }
    feed(t);
}

void roll_over(TestMachine& t, int first, int second) {
    for (const auto kind : {KeyEvent::Kind::DOWN, KeyEvent::Kind::UP}) {
        for (const int key : {first, second}) {
            KeyEvent event;
            event.kind = kind;
            event.key = key;
            push_key_event(t.simulator->keys, event);
        }
        t.tick(4);
    }
}

void enter(TestMachine& t, std::string_view text) {
    type(t, text);
    t.exe();
}

CommandLine::CommandLine() { load_program(""); }

void CommandLine::load_program(std::string_view lines) {
    if (!lines.empty())
        start(lines);
    run_host_command(*simulator, COMMAND_LINE);
    exe();
}

std::string CommandLine::says(std::string_view line) {
    enter(*this, line);
    wait();
    const std::string shown = m.error_code == ERROR_NONE ? display() : failure_of(m);
    if (m.run_state == STATE_COMMAND_ERROR || m.run_state == STATE_ENDED)
        press(*this, HOME);
    else if (m.run_state != STATE_COMMAND)
        exe();
    EXPECT_EQ(m.run_state, STATE_COMMAND) << line;
    return shown;
}

void CommandLine::expect(std::string_view table) {
    for (const Case& row : arrow_cases(table))
        EXPECT_EQ(says(row.text), row.outcome) << row.text;
}

const Variable& cell(const TestMachine& t, char letter) {
    return t.m.variables[static_cast<std::size_t>(letter - 'A')];
}

} // namespace quillon::testing
