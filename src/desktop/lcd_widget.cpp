// Painting the LCD, and clicks on it.
#include "desktop/lcd_widget.h"

#include "desktop/lcd_accessibility.h"
#include "keys/lcd_click.h"
#include "shell/lcd_text.h"

#include <QAccessible>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillon {

LcdWidget::LcdWidget(Simulator& simulator_, QWidget* parent) : QWidget(parent), simulator(simulator_) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("LCD"));
}

int LcdWidget::pixel_size() const {
    return std::max(1, static_cast<int>(std::floor(simulator.machine.zoom * devicePixelRatioF())));
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
    const double ratio = devicePixelRatioF();
    const int size = pixel_size();
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio); // from here on in device pixels
    painter.fillRect(QRectF(0, 0, width() * ratio, height() * ratio), palette().window());
    painter.drawImage(QRect(0, 0, canvas.width * size, canvas.height * size), image);
}

void LcdWidget::click(const QMouseEvent& event, bool is_double) {
    const double canvas_pixels = devicePixelRatioF() / pixel_size();
    const int zoom = simulator.machine.zoom; // the machine counts in zoomed pixels
    const int x = static_cast<int>(std::floor(event.position().x() * canvas_pixels * zoom));
    const int y = static_cast<int>(std::floor(event.position().y() * canvas_pixels * zoom));
    const LcdClick left = is_double ? LcdClick::LEFT_DOUBLE : LcdClick::LEFT;
    on_lcd_click(simulator.machine, event.button() == Qt::RightButton ? LcdClick::RIGHT : left, x, y, 0);
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
