// SPDX-License-Identifier: MIT
// Ticking.
#include "desktop/ticker.h"

#include <utility>

namespace quillon {

Ticker::Ticker(Session& session_, std::function<bool()> tick_machine_, std::function<void(bool)> after_tick_,
               QObject* parent)
    : QObject(parent), simulator(session_.simulator), tick_machine(std::move(tick_machine_)),
      after_tick(std::move(after_tick_)) {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &Ticker::tick);
}

void Ticker::arm() { timer.start(simulator.machine.settings.timer_interval); }

void Ticker::stop() { timer.stop(); }

void Ticker::tick() {
    const bool changed = tick_machine();
    arm();
    after_tick(changed);
}

} // namespace quillon
