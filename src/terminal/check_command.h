// SPDX-License-Identifier: MIT
// `quillon-cli check`: reads listings without running them and reports what is wrong with them.
#pragma once

#include <string>
#include <vector>

namespace quillon {

/// What `check` was asked to do.
struct CheckOptions {
    std::vector<std::string> listings; ///< files; "-" is standard input
    bool json = false;
};

/// How a check ended: the program's exit status.
enum CheckStatus : int {
    CHECK_NO_ERROR = 0,
    CHECK_ERRORS = 1,     ///< at least one listing has an error
    CHECK_UNREADABLE = 2, ///< a wrong command line, or a listing that cannot be read
};

/// Checks listings and writes the report to standard output, `file:line:column: error: text` each, or one JSON
/// document; what cannot be read is told on standard error, and the others are checked all the same.
CheckStatus check_listings(const CheckOptions& options);

} // namespace quillon
