// SPDX-License-Identifier: MIT
// The LCD in the window: shows the simulator's canvas in whole device pixels, and takes the mouse.
#pragma once

#include "session/session.h"

#include <QWidget>

namespace quillon {

class LcdWidget : public QWidget {
    Q_OBJECT

public:
    explicit LcdWidget(Session& session, QWidget* parent = nullptr);

    /// Takes the size for the zoom, or as much of it as finds room. The width is a minimum: what is beside the picture
    /// looks like its edge.
    void fit_into(QSize room);

    /// Where the picture is.
    [[nodiscard]] QRectF picture_area() const;

    [[nodiscard]] QSize sizeHint() const override;

    /// The visible characters and, on a line of their own, the lit indicators.
    [[nodiscard]] QString described_text() const;

    /// The picture has changed: paints it, and announces a text that differs from the last one.
    void refresh();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] int pixel_size() const;
    void click(const QMouseEvent& event, bool is_double);

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    QSize room;           ///< for the picture, in the toolkit's pixels
    QString announced_text;
    bool double_click_held = false; ///< the release that ends a double click is none of its own
};

} // namespace quillon
