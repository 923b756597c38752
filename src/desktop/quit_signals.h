// SPDX-License-Identifier: MIT
// Ending in good order when the system asks for it, so that nothing is lost; and in any case.
#pragma once

#include <QObject>

#include <functional>

namespace quillon {

/// Calls `quit` from the event loop when SIGTERM, SIGINT or SIGHUP has come. Once, for the life of `owner`. A program
/// that has not ended ten seconds after the signal is killed.
void watch_quit_signals(QObject* owner, std::function<void()> quit);

} // namespace quillon
