// SPDX-License-Identifier: MIT
// Keys.
#include "tests/support/keyboard.h"

#include "keys/key_map.h"
#include "shell/commands.h"
#include "shell/key_queue.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

constexpr int TICKS_MAX = 2000; ///< for what has to end

void push(TestMachine& t, KeyEvent::Kind kind, int key, Modifiers modifiers = NONE, char character = 0) {
    KeyEvent event;
    event.kind = kind;
    event.key = key;
    event.modifiers = modifiers;
    event.character = character;
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
    push(t, KeyEvent::Kind::DOWN, key, modifiers);
    push(t, KeyEvent::Kind::UP, key, modifiers);
    feed(t);
}

void type(TestMachine& t, std::string_view text) {
    for (const char c : text)
        type_at_once(t, std::string_view(&c, 1));
}

void type_at_once(TestMachine& t, std::string_view text) {
    for (const char c : text) {
        const int key = c == '\n' ? ENTER : CHARACTER_KEY_BASE + static_cast<unsigned char>(c);
        const Modifiers modifiers = c >= 'a' && c <= 'z' ? SHIFT : NONE;
        push(t, c == '\n' ? KeyEvent::Kind::DOWN : KeyEvent::Kind::CHARACTER, key, modifiers, c);
        push(t, KeyEvent::Kind::UP, key, modifiers, c);
    }
    feed(t);
}

void roll_over(TestMachine& t, int first, int second) {
    for (const auto kind : {KeyEvent::Kind::DOWN, KeyEvent::Kind::UP}) {
        push(t, kind, first);
        push(t, kind, second);
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
    const std::string shown = !failed(m) ? display() : failure_of(m);
    if (m.run.run_state == STATE_COMMAND_ERROR || m.run.run_state == STATE_ENDED)
        press(*this, HOME);
    else if (m.run.run_state != STATE_COMMAND)
        exe();
    EXPECT_EQ(m.run.run_state, STATE_COMMAND) << line;
    return shown;
}

const Variable& cell(const TestMachine& t, char letter) {
    return t.m.variables[static_cast<std::size_t>(letter - 'A')];
}

} // namespace quillon::testing
