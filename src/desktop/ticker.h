// SPDX-License-Identifier: MIT
// The machine's clock: a one-shot timer, armed anew after each tick, so that ticks never overlap and their period is
// the interval and the tick's own time.
#pragma once

#include "session/session.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace quillon {

class Ticker : public QObject {
    Q_OBJECT

public:
    /// `after_tick` is called behind each tick, with whether the LCD's picture has changed.
    Ticker(Session& session, std::function<void(bool picture_changed)> after_tick, QObject* parent);

    /// Arms the timer with the machine's interval, also in place of what it was armed with.
    void arm();

    void stop();

    [[nodiscard]] bool is_armed() const { return timer.isActive(); }

private:
    void tick();

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    std::function<void(bool)> after_tick;
    QTimer timer;
};

} // namespace quillon
