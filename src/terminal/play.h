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

/// Plays until it is left. Returns the program's exit status: 0; 2 where standard input and output are no terminal, or
/// none that can be drawn on. A signal that ends the program does so after the terminal and the files are in order.
int play(const PlayOptions& options);

} // namespace quillon
