// SPDX-License-Identifier: MIT
// Child processes by fork.
#include "tests/support/child_process.h"

#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon::testing {
namespace {

constexpr unsigned PATIENCE_SECONDS = 60;

void close_end(int& end) {
    if (end >= 0)
        close(end);
    end = -1;
}

/// Becomes the program. What ignores SIGPIPE here is not to be inherited; the alarm is.
[[noreturn]] void become_program(const std::vector<std::string>& arguments, int in, int out,
                                 const std::string& errors) {
    std::vector<char*> argv{const_cast<char*>(QUILLON_CLI)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    alarm(PATIENCE_SECONDS);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(open(errors.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDERR_FILENO);
    execv(QUILLON_CLI, argv.data());
    _exit(127);
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    int in[2];
    int out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    pid_ = fork();
    if (pid_ == 0)
        become_program(arguments, in[0], out[1], folder_ / "errors");
    close_end(in[0]);
    close_end(out[1]);
    input_ = in[1];
    output_ = out[0];
}

ChildProcess::~ChildProcess() {
    close_end(input_);
    close_end(output_);
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

bool ChildProcess::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t count = ::write(input_, text.data(), text.size());
        if (count < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string ChildProcess::read(std::size_t count) {
    std::string text;
    char chunk[4096];
    while (text.size() < count && output_ >= 0) {
        const ssize_t got = ::read(output_, chunk, sizeof chunk);
        if (got <= 0)
            close_end(output_);
        else
            text.append(chunk, static_cast<std::size_t>(got));
    }
    return text;
}

void ChildProcess::close_output() { close_end(output_); }

Outcome ChildProcess::finish() {
    close_end(input_);
    Outcome outcome;
    outcome.out = read(std::string::npos);
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    outcome.err = get_file(folder_ / "errors");
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return outcome;
}

Outcome run_program(const std::vector<std::string>& arguments, std::string_view input) {
    ChildProcess program(arguments);
    program.write(input);
    return program.finish();
}

} // namespace quillon::testing
