// SPDX-License-Identifier: MIT
// The built program `quillon-cli` as a child process: what it writes, how it ends, and its pipes while it runs.
#pragma once

#include "tests/support/temporary_file.h"

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quillon::testing {

/// How a program ended.
struct Outcome {
    int status = -1; ///< exit status; 128 and the signal's number where a signal ended it
    std::string out;
    std::string err;
};

/// A running quillon-cli. What hangs for a minute is killed, and its status tells so.
class ChildProcess {
public:
    explicit ChildProcess(const std::vector<std::string>& arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Writes to its standard input; false when it does not take that any more.
    bool write(std::string_view text) const;

    /// Reads from its standard output until that many bytes have come or it ends.
    std::string read(std::size_t count);

    void close_output();

    /// Closes its input, reads what it still writes, and waits for its end.
    Outcome finish();

private:
    TempFolder folder_; ///< of its standard error
    pid_t pid_ = -1;
    int input_ = -1;
    int output_ = -1;
};

/// Runs quillon-cli to its end.
Outcome run_program(const std::vector<std::string>& arguments, std::string_view input = "");

} // namespace quillon::testing
