// SPDX-License-Identifier: MIT
// `quillon-cli replay`: goes through a session file and says whether the machine went the same way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillon {

/// What `replay` was asked to do.
struct ReplayOptions {
    std::string file;
    std::optional<std::uint64_t> until; ///< a tick; else to the end
    bool lcd = false;                   ///< print what the display shows where the replay stands
};

/// Goes through a session file. Exit status: 0 it went the same way; 1 it did not, as standard error says; 2 a file
/// that cannot be read, or output that cannot be written.
int replay_file(const ReplayOptions& options);

} // namespace quillon
