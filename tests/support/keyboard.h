// SPDX-License-Identifier: MIT
// A person at the keyboard: keys that go through the key queue as those of a window do, and a command line to type on.
#pragma once

#include "keys/virtual_keys.h"
#include "tests/support/test_machine.h"

#include <string>
#include <string_view>

namespace quillon::testing {

// Virtual keys, by the names that test scripts use.
constexpr int BACKSPACE = VK_BACKSPACE, ENTER = VK_ENTER, END = VK_END, HOME = VK_HOME, LEFT = VK_LEFT, UP = VK_UP,
              RIGHT = VK_RIGHT, DOWN = VK_DOWN, INSERT = VK_INSERT, DEL = VK_DELETE, F7 = VK_F7;
constexpr Modifiers NONE{};
constexpr Modifiers SHIFT{true, false, false};
constexpr Modifiers CTRL{false, true, false};

/// A key goes down and comes up again; ticks until the machine is through with it.
void press(TestMachine& t, int key, Modifiers modifiers = NONE);

/// Types a text as a keyboard with these characters does: a letter alone is upper case.
void type(TestMachine& t, std::string_view text);

/// Types a text as fast as it can be, EXE for each "\n": all keys come before the first tick.
void type_at_once(TestMachine& t, std::string_view text);

/// Two keys one after the other, the second before the first comes up; it does so four ticks later.
void roll_over(TestMachine& t, int first, int second);

/// Types a text and EXE.
void enter(TestMachine& t, std::string_view text);

/// A machine at an empty command line.
struct CommandLine : TestMachine {
    CommandLine();

    /// Loads a listing and is at an empty command line again.
    void load_program(std::string_view lines);

    /// Types a line and EXE. Gives what is shown then, or the error; EXE or the clear key clears it.
    std::string says(std::string_view line);
};

/// Cell A to Z of a machine.
const Variable& cell(const TestMachine& t, char letter);

} // namespace quillon::testing
