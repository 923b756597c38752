// SPDX-License-Identifier: MIT
// From signals to the event loop, through a pipe: in a handler hardly anything else is allowed.
#include "desktop/quit_signals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quillon {
namespace {

// A handler reaches nothing but what is global.
int pipe_ends[2] = {-1, -1}; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// A program that hangs, on a display or a disk that no longer answers, ends all the same.
constexpr unsigned SECONDS_TO_END = 10;

extern "C" void note_signal(int) {
    const int saved_errno = errno;
    alarm(SECONDS_TO_END);
    const char byte = 0;
    static_cast<void>(!write(pipe_ends[1], &byte, 1)); // a full pipe holds a request already
    errno = saved_errno;
}

} // namespace

void watch_quit_signals(QObject* owner, std::function<void()> quit) {
    if (pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(pipe_ends[0], QSocketNotifier::Read, owner);
    QObject::connect(notifier, &QSocketNotifier::activated, owner, [notifier, quit = std::move(quit)] {
        notifier->setEnabled(false);
        quit();
    });
    struct sigaction action = {};
    action.sa_handler = note_signal;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);
}

} // namespace quillon
