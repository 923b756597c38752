// Child processes by posix_spawn.
#include "tests/support/child_process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace quillon::testing {
namespace {

constexpr int PATIENCE_MILLISECONDS = 60000;

struct Pipe {
    int reader;
    int writer;
};

Pipe make_pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

void close_end(int& end) {
    if (end >= 0)
        close(end);
    end = -1;
}

/// Takes over what a pipe holds; closes it at its end.
void drain(int& end, std::string* text) {
    char chunk[4096];
    const ssize_t count = ::read(end, chunk, sizeof chunk);
    if (count <= 0)
        close_end(end);
    else if (text != nullptr)
        text->append(chunk, static_cast<std::size_t>(count));
}

/// A child is not to inherit that this process ignores SIGPIPE.
void spawn(pid_t& pid, const std::vector<std::string>& arguments, posix_spawn_file_actions_t& actions) {
    std::vector<char*> argv{const_cast<char*>(QUILLON_CLI)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawnattr_t attributes;
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int result = posix_spawn(&pid, QUILLON_CLI, &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (result != 0)
        throw std::runtime_error("cannot start " QUILLON_CLI);
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    Pipe in = make_pipe();
    Pipe out = make_pipe();
    Pipe err = make_pipe();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.reader, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.writer, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.writer, STDERR_FILENO);
    spawn(pid_, arguments, actions);
    posix_spawn_file_actions_destroy(&actions);
    close_end(in.reader);
    close_end(out.writer);
    close_end(err.writer);
    input_ = in.writer;
    output_ = out.reader;
    errors_ = err.reader;
}

ChildProcess::~ChildProcess() {
    close_end(input_);
    close_end(output_);
    close_end(errors_);
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

/// Waits until the program writes or closes its output, and takes that over; false when it does neither.
bool ChildProcess::read_more(std::string* out, std::string* err) {
    std::array<pollfd, 2> ends{{{output_, POLLIN, 0}, {errors_, POLLIN, 0}}};
    if (poll(ends.data(), ends.size(), PATIENCE_MILLISECONDS) <= 0)
        return false;
    if (ends[0].revents != 0)
        drain(output_, out);
    if (ends[1].revents != 0)
        drain(errors_, err);
    return true;
}

std::string ChildProcess::read(std::size_t count) {
    std::string text;
    while (text.size() < count && output_ >= 0 && read_more(&text, nullptr)) {
    }
    return text;
}

void ChildProcess::close_output() { close_end(output_); }

Outcome ChildProcess::finish() {
    close_end(input_);
    Outcome outcome;
    while (output_ >= 0 || errors_ >= 0) {
        if (!read_more(&outcome.out, &outcome.err)) {
            kill(pid_, SIGKILL);
            break;
        }
    }
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return outcome;
}

Outcome run_program(const std::vector<std::string>& arguments, std::string_view input) {
    ChildProcess program(arguments);
    program.write(input);
    return program.finish();
}

} // namespace quillon::testing
