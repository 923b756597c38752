// SPDX-License-Identifier: MIT
// quillon-cli: listings in the terminal.
#include "terminal/command_line.h"

#include <csignal>

int main(int argc, char** argv) {
    // A closed pipe and a file at its limit show where output is written.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return quillon::run_command_line(argc, argv);
}
