// Ending as if the window had been closed when the system asks for it, so that nothing is lost.
#pragma once

#include <QObject>

#include <functional>

namespace quillon {

/// Calls `quit` from the event loop when SIGTERM, SIGINT or SIGHUP has come. Once, for the life of `owner`.
void watch_quit_signals(QObject* owner, std::function<void()> quit);

} // namespace quillon
