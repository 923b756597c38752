// SPDX-License-Identifier: MIT
// A slider over the ticks of a session, with marks at its errors, stops and loads.
#pragma once

#include "session/log.h"

#include <QSlider>

namespace quillon {

class TimeSlider : public QSlider {
    Q_OBJECT

public:
    explicit TimeSlider(QWidget* parent = nullptr);

    /// Shows a session whose present moment is `now`.
    void show_time(const SessionLog& log, TickCount now);

signals:
    /// It was moved by a person.
    void chosen(quint64 tick);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int place_of(TickCount tick) const;

    std::vector<Mark> marks;
    TickCount first = 0;
    TickCount end = 0;
};

} // namespace quillon
