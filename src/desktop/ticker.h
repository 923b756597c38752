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
    /// `tick_machine` makes a tick and returns whether the LCD's picture has changed; `after_tick` is called after each
    /// with that.
    Ticker(Session& session, std::function<bool()> tick_machine, std::function<void(bool picture_changed)> after_tick,
           QObject* parent);

    /// Arms the timer with the machine's interval, also in place of what it was armed with.
    void arm();

    void stop();

    [[nodiscard]] bool is_armed() const { return timer.isActive(); }

private:
    void tick();

    const Simulator& simulator;
    std::function<bool()> tick_machine;
    std::function<void(bool)> after_tick;
    QTimer timer;
};

} // namespace quillon
