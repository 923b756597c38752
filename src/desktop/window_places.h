// SPDX-License-Identifier: MIT
// Where windows go on the screen, as far as the window system lets a program say so.
#pragma once

#include <QPoint>
#include <QSize>
#include <QWidget>

namespace quillon {

/// Whether the window system lets programs place their windows.
bool can_place_windows();

/// What a window's frame adds to its size; nothing while that is not known.
QSize frame_extent(const QWidget& window);

/// The place nearest to `place` where a window of this size, frame included, is on the screen of `window`; its upper
/// left corner counts when it does not fit.
QPoint place_on_screen(const QWidget& window, QPoint place, QSize size);

} // namespace quillon
