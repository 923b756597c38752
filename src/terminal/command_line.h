// SPDX-License-Identifier: MIT
// The command line of `quillon-cli`.
#pragma once

namespace quillon {

/// Reads the command line and carries out the subcommand; returns the program's exit status. A wrong command line is
/// told on standard error and gives 2.
int run_command_line(int argc, char** argv);

} // namespace quillon
