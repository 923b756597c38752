// SPDX-License-Identifier: MIT
// The command line of the window program. It is read before the toolkit starts, so that help and complaints need no
// display, and as bytes, since a file's name need not be in any encoding.
#pragma once

#include <optional>
#include <string>

namespace quillon {

/// The exit status for a wrong command line, and where no window can be opened.
constexpr int BAD_CALL = 2;

/// What the command line asks for.
struct Arguments {
    std::string listing; ///< path of the listing to open, any bytes; empty for none
};

/// Reads the command line. An exit status when there is nothing left to do: help or the version was printed, or what is
/// wrong was said. The toolkit's own options are skipped, with their values; it reads them itself.
std::optional<int> read_arguments(int argc, char** argv, Arguments& arguments);

} // namespace quillon
