// SPDX-License-Identifier: MIT
// The slider's scale and its marks.
#include "desktop/time_slider.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>

namespace quillon {
namespace {

constexpr int PLACES = 100'000; ///< of the whole session: more than a screen has pixels

QColor colour_of(Mark::Kind kind) {
    switch (kind) {
    case Mark::Kind::ERROR: return Qt::red;
    case Mark::Kind::STOP: return Qt::darkYellow;
    default: return Qt::darkCyan;
    }
}

} // namespace

TimeSlider::TimeSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setRange(0, PLACES);
    setTracking(true);
    connect(this, &QSlider::actionTriggered, this, [this] {
        const auto span = static_cast<double>(end - first);
        emit chosen(first + static_cast<TickCount>(span * sliderPosition() / PLACES + 0.5));
    });
}

int TimeSlider::place_of(TickCount tick) const {
    if (end == first)
        return PLACES;
    return static_cast<int>(static_cast<double>(tick - first) / static_cast<double>(end - first) * PLACES);
}

void TimeSlider::show_time(const SessionLog& log, TickCount now) {
    first = log.snapshots.front().tick;
    end = log.end;
    marks = log.marks;
    // A page is a thirtieth of the session, an arrow key a tick where the scale has it.
    setPageStep(PLACES / 30);
    setSingleStep(std::max(1, end == first ? 1 : static_cast<int>(PLACES / (end - first))));
    if (!isSliderDown())
        setValue(place_of(now));
    update();
}

void TimeSlider::paintEvent(QPaintEvent* event) {
    QSlider::paintEvent(event);
    constexpr int MARK_HEIGHT = 4;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const int handle = style()->pixelMetric(QStyle::PM_SliderLength, &option, this);
    QPainter painter(this);
    for (const Mark& mark : marks) {
        const int x = handle / 2 + QStyle::sliderPositionFromValue(0, PLACES, place_of(mark.tick), width() - handle);
        painter.fillRect(x, height() - MARK_HEIGHT, 2, MARK_HEIGHT, colour_of(mark.kind));
    }
}

} // namespace quillon
