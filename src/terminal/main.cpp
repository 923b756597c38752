// quillon-cli: listings in the terminal.
#include "terminal/command_line.h"

#include <csignal>

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe shows where output is written
    return quillon::run_command_line(argc, argv);
}
