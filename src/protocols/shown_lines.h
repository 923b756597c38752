// SPDX-License-Identifier: MIT
// What a program shows, as lines of text: follows the display line from tick to tick, with EXE held down, and puts
// together again what scrolled by.
#pragma once

#include "core/machine.h"

#include <functional>
#include <string>
#include <string_view>

namespace quillon {

/// The line that is being shown. Its text is handed on as soon as the PRINT statement is done with it. A line that is
/// changed after that, because its column is moved back, is handed on anew and once, when it stands: when the machine
/// waits for EXE, clears it or ends; of a line that has grown beyond a thousand characters, the end.
struct ShownLines {
    std::function<void(std::string_view text)> write; ///< gets machine text, with a line feed behind each whole line

    std::string line;         ///< the line with what has scrolled off; of a very long one, the end
    std::size_t scrolled = 0; ///< how much of it lies to the left of the display line
    std::size_t extent = 0;   ///< columns of the display line that belong to it
    std::size_t written = 0;  ///< how much of it has been handed on
    bool rewritten = false;   ///< what has been handed on is no longer its beginning
    bool stands = false;      ///< the line is complete; the next tick begins a new one
    bool printing = false;    ///< a PRINT list was under way after the last tick
    bool scrolling = false;   ///< a text was scrolling in
    int last_cursor = 0;      ///< the write column then
};

/// Looks at the machine after a tick.
void follow_display(ShownLines& shown, const Machine& m);

/// Hands on the rest of a line that is not complete, then `tail` and a line feed: when the program ends or asks for
/// input.
void finish_shown_lines(ShownLines& shown, std::string_view tail = {});

} // namespace quillon
