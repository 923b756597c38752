// SPDX-License-Identifier: MIT
// What comes from the terminal's keyboard, by what it means for `play`.
#pragma once

#include "terminal/play_keys.h"

#include <optional>

namespace quillon {

/// A key, or something else that the terminal told.
struct TerminalInput {
    enum Kind {
        NOTHING, ///< a key without a meaning
        KEY,     ///< one for the machine
        STOP,    ///< Ctrl+C
        LEAVE,   ///< Ctrl+Q
        PREFIX,  ///< Ctrl+A
        REDRAW,  ///< Ctrl+L
        RESIZE,  ///< the terminal has another size now
    };
    Kind kind = NOTHING;
    TypedKey key{};
};

/// Raw keys without echo and flow control, function keys as such, no cursor. The screen has been set up before.
void prepare_terminal_input();

/// The next input; nothing when there is none now. Never waits, save for the rest of a key's own sequence.
std::optional<TerminalInput> read_terminal();

} // namespace quillon
