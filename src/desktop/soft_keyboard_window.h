// SPDX-License-Identifier: MIT
// The soft keyboard's window: shows the layer that the latches choose and hands the mouse on to the machine. It docks
// to the main window's lower edge and follows it; where the system lets no program place its windows it is a panel
// there.
#pragma once

#include "display/image.h"
#include "session/session.h"

#include <QImage>
#include <QWidget>

namespace quillon {

class SoftKeyboardWindow : public QWidget {
    Q_OBJECT

public:
    /// `as_panel`: a part of the main window instead of a window of its own.
    SoftKeyboardWindow(Session& session, QWidget* main_window, bool as_panel);

    /// Whether the keyboard's picture could be prepared.
    [[nodiscard]] bool is_usable() const { return !picture.isNull(); }

    /// Puts the window below the main window, or above it where the screen has no room below. To be called again and
    /// again: the window system tells of the main window's frame when it likes.
    void dock();

    /// Repaints if the keyboard looks different now.
    void refresh();

    /// What a key (of keys/soft_keys) is called on the layer that shows, and where in the window it is.
    [[nodiscard]] QString key_name(int key) const;
    [[nodiscard]] QRect key_area(int key) const;

    /// Presses and releases a key, as the mouse does.
    void click_key(int key);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Session& session;
    Simulator& simulator; ///< of the session: to look at
    QWidget* main_window;
    bool as_panel;
    QImage picture;      ///< the six layers
    QPoint docked_place; ///< where it has been put

    /// What of the machine the picture shows.
    struct Drawn {
        int layer = 0;
        int highlight = -1;

        bool operator==(const Drawn&) const = default;
    } drawn;
};

} // namespace quillon
