// SPDX-License-Identifier: MIT
// Painting the LCD, and clicks on it.
#include "desktop/lcd_widget.h"

#include "core/controls.h"
#include "desktop/catalogue_text.h"
#include "desktop/lcd_accessibility.h"
#include "shell/lcd_text.h"

#include <QAccessible>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillon {

LcdWidget::LcdWidget(Session& session_, QWidget* parent)
    : QWidget(parent), session(session_), simulator(session_.simulator) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    fit_into({LCD_WIDTH, LCD_HEIGHT});
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(catalogue_text(simulator.machine.around->catalogue, "WINDOW", 0, "LCD"));
}

/// Device pixels of one canvas pixel: from the zoom and the screen's scale factor, as far as there is room.
int LcdWidget::pixel_size() const {
    const double pixels =
        std::min({static_cast<double>(simulator.machine.settings.zoom), static_cast<double>(room.width()) / LCD_WIDTH,
                  static_cast<double>(room.height()) / LCD_HEIGHT});
    return std::max(1, static_cast<int>(std::floor(pixels * devicePixelRatioF())));
}

void LcdWidget::fit_into(QSize room_) {
    room = room_;
    const QSize size = LcdWidget::sizeHint(); // also called while this is constructed
    setMinimumWidth(size.width());
    setFixedHeight(size.height());
}

/// In the middle, from a whole device pixel on.
QRectF LcdWidget::picture_area() const {
    const double ratio = devicePixelRatioF();
    const int size = pixel_size();
    const double left = std::max(0.0, std::floor((width() * ratio - LCD_WIDTH * size) / 2));
    return {left / ratio, 0, LCD_WIDTH * size / ratio, LCD_HEIGHT * size / ratio};
}

QSize LcdWidget::sizeHint() const {
    const double size = pixel_size() / devicePixelRatioF();
    return {static_cast<int>(std::ceil(LCD_WIDTH * size)), static_cast<int>(std::ceil(LCD_HEIGHT * size))};
}

QString LcdWidget::described_text() const {
    return QString::fromUtf8(lcd_text(simulator) + "\n" + lcd_indicator_text(simulator));
}

void LcdWidget::refresh() {
    update();
    if (!QAccessible::isActive())
        return;
    const QString text = described_text();
    if (text == announced_text)
        return;
    announce_lcd_text(this, announced_text, text);
    announced_text = text;
}

void LcdWidget::paintEvent(QPaintEvent*) {
    const Canvas& canvas = simulator.lcd.canvas;
    const QImage image(reinterpret_cast<const uchar*>(canvas.pixels.data()), canvas.width, canvas.height,
                       canvas.width * 4, QImage::Format_RGB32);
    QPainter painter(this);
    painter.fillRect(rect(), QColor(image.pixel(0, 0)));
    const double ratio = devicePixelRatioF();
    const QRectF area = picture_area();
    painter.scale(1 / ratio, 1 / ratio); // from here on in device pixels
    painter.drawImage(QRectF(area.topLeft() * ratio, area.size() * ratio).toRect(), image);
}

void LcdWidget::click(const QMouseEvent& event, bool is_double) {
    const QRectF area = picture_area();
    const double scale = LCD_WIDTH / area.width();
    const int x = static_cast<int>(std::floor((event.position().x() - area.left()) * scale));
    const int y = static_cast<int>(std::floor(event.position().y() * scale));
    const InputVerb left = is_double ? InputVerb::CLICK_DOUBLE : InputVerb::CLICK_LEFT;
    const InputVerb verb = event.button() == Qt::RightButton ? InputVerb::CLICK_RIGHT : left;
    session_input(session, {.verb = verb, .numbers = {x, y}});
}

void LcdWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool ends_double_click = std::exchange(double_click_held, false);
    const bool button = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    if (button && !ends_double_click)
        click(*event, false);
}

void LcdWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    double_click_held = true;
    click(*event, true);
}

} // namespace quillon
