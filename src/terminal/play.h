// SPDX-License-Identifier: MIT
// `quillon-cli play`: the whole machine in a terminal.
#pragma once

#include <string>

namespace quillon {

/// What `play` was asked to do.
struct PlayOptions {
    std::string listing;   ///< to be opened; empty for that of the last time
    std::string catalogue; ///< a message catalogue file; empty for that of the user's language
    bool no_save = false;  ///< write neither settings nor variables
    bool text = false;     ///< show the display as a line of text
    bool bell = false;     ///< ring the terminal's bell for tones
};

/// How a play ended: the program's exit status.
enum PlayStatus : int {
    PLAY_LEFT = 0,
    PLAY_UNSAVED = 1,  ///< left, but not everything could be saved
    PLAY_BAD_CALL = 2, ///< no terminal to draw on, a wrong command line, a listing that cannot be opened
};

/// Plays until it is left, and returns the program's exit status. A signal that ends the program does so after the
/// terminal and the files are in order.
int play(const PlayOptions& options);

} // namespace quillon
