// SPDX-License-Identifier: MIT
// Places on the screen.
#include "desktop/window_places.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace quillon {

bool can_place_windows() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

QSize frame_extent(const QWidget& window) { return window.frameGeometry().size() - window.size(); }

QPoint place_on_screen(const QWidget& window, QPoint place, QSize size) {
    const QRect area = window.screen()->availableGeometry();
    return {std::clamp(place.x(), area.left(), std::max(area.left(), area.left() + area.width() - size.width())),
            std::clamp(place.y(), area.top(), std::max(area.top(), area.top() + area.height() - size.height()))};
}

} // namespace quillon
