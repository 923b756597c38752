// SPDX-License-Identifier: MIT
// Everything that reaches a machine from outside, as data: the vocabulary of the driving protocol and of session files.
// An input is a line of text to people and scripts, a row of a table here, and one call that applies it. Inputs take no
// time: they come between two ticks.
#pragma once

#include "core/fields.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

struct KeyEvent;
struct Simulator;

/// What an input does. The first group is what scripts may say too; the second is what a window and `run` make of keys,
/// entries and dialogs; the third is what the machine was answered when it asked, which only a replay reads.
enum class InputVerb : std::uint8_t {
    SET,          ///< sets a field of the record
    CELL,         ///< changes a variable cell
    HOST_COMMAND, ///< a host command by its number
    LOAD,         ///< opens a listing
    HOLD,         ///< a modifier key goes down
    UNHOLD,       ///< and comes up
    PRESS,        ///< key-down messages
    REPEAT,
    ALT_PRESS,
    RELEASE,    ///< the key is no longer down
    KEY_STRING, ///< the pending key as bytes, no key counts as down by it
    EXE,        ///< EXE is pressed
    SOFT_DOWN,  ///< mouse on the soft keyboard
    SOFT_UP,
    CLICK_LEFT, ///< mouse on the LCD, in its pixels
    CLICK_DOUBLE,
    CLICK_RIGHT,

    KEY_DOWN,     ///< events for the key queue: virtual key, modifiers, and the character of the user's own layout
    ALT_KEY_DOWN, ///< the same while Alt is held
    KEY_UP,
    DROP_KEYS,   ///< the window has lost the keyboard
    TEXT,        ///< the pending key as bytes, and nothing else changes; without bytes none is pending
    CHARACTER,   ///< a key goes down that types these bytes; without bytes it comes up
    ENTRY,       ///< the text of the entry line
    BEGIN_ENTRY, ///< where a prompt waits for a key: the entry begins without one
    ASK_AGAIN,   ///< where a refused entry is shown: its prompt is shown again
    EXE_HELD,    ///< EXE is held from now on (1), or is let go (0)
    ADJUST,      ///< sets a field that a window adjusts
    STEP,        ///< runs one statement of a traced program
    RESTORE,     ///< puts the moment of an image in place

    ANSWER_FILE,    ///< the bytes of a file that was read
    ANSWER_NO_FILE, ///< it could not be read, and why
    ANSWER_PASTE,   ///< what was on the clipboard
    ANSWER_TIME,    ///< milliseconds since the start
};

struct Input {
    InputVerb verb = InputVerb::EXE;
    std::array<long long, 2> numbers{};           ///< in the order of the line's arguments
    std::string word{};                           ///< name of a field, a cell or a modifier key
    std::string text{};                           ///< typed bytes, a cell's new value, or a path
    std::shared_ptr<const std::string> content{}; ///< of a file
};

/// What is wrong with a line, as a sentence; empty when nothing is.
using Refusal = std::string;

/// The highest number that a script may set a field to.
long long highest_to_set(const Field& field);

/// Whether a line begins with a word of this vocabulary, and may be read by `parse_input`.
bool is_input_line(std::string_view line);

/// Whether an input has a content, of `numbers[0]` bytes, which is not in its line.
inline bool has_content(const Input& input) {
    return input.verb == InputVerb::RESTORE || input.verb == InputVerb::ANSWER_FILE;
}

/// Reads a line, any bytes; a content is for the caller to add.
Refusal parse_input(std::string_view line, Input& input);

/// The line that `parse_input` reads back to an equal input, save for the content of a file.
std::string input_line(const Input& input);

/// The uses of the fields that ADJUST may set.
constexpr unsigned ADJUSTABLE = FIELD_SETTABLE | FIELD_SETTING | FIELD_ADJUSTED;

/// The input that restores the moment of an image.
Input restore_input(std::string image);

/// Whether a script may say an input.
inline bool is_for_scripts(const Input& input) { return input.verb <= InputVerb::CLICK_RIGHT; }

/// Whether an input is an answer.
inline bool is_answer(const Input& input) { return input.verb >= InputVerb::ANSWER_FILE; }

/// A key event of the window as an input.
Input key_input(const KeyEvent& event);

/// Applies an input. Every input that `parse_input` accepts is safe in any state; answers do nothing. False for a
/// listing that was not loaded.
bool apply_input(Simulator& s, const Input& input);

} // namespace quillon
