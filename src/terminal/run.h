// SPDX-License-Identifier: MIT
// `quillon-cli run`: runs a listing as fast as it goes and prints what it shows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// What `run` was asked to do.
struct RunOptions {
    std::string listing;                    ///< a file; "-" is standard input
    std::optional<int> page;                ///< 0-9; else the first area in use
    std::optional<std::uint64_t> max_ticks; ///< else no limit
    std::optional<std::uint32_t> seed;      ///< of the random generator
    std::string catalogue;                  ///< a message catalogue file; empty for that of the user's language
    std::vector<std::string> settings;      ///< KEY=VALUE, as in the settings file
    std::string values;                     ///< file of the variable memory; empty for none
    std::string keys;                       ///< UTF-8: what KEY$ reads, a character at a time
    std::string record;                     ///< file that the session is written to; empty for none
    bool echo = false;                      ///< print what INPUT reads
};

/// How a run ended: the program's exit status.
enum RunStatus : int {
    RUN_ENDED = 0,
    RUN_ERROR = 1,      ///< an error of the program
    RUN_BAD_CALL = 2,   ///< a wrong command line, a listing that does not load, output or values that cannot be written
    RUN_NO_INPUT = 3,   ///< INPUT with no more input
    RUN_TICKS_USED = 4, ///< the limit of ticks was reached
};

/// Runs a listing and returns the exit status. Lines go to standard output, errors to standard error; INPUT takes lines
/// of standard input.
int run_listing(const RunOptions& options);

} // namespace quillon
