// SPDX-License-Identifier: MIT
// The toolkit's accessibility interfaces for the LCD.
#include "desktop/lcd_accessibility.h"

#include "desktop/lcd_widget.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>

namespace quillon {
namespace {

/// Output that changes by itself, as a terminal's does: screen readers read such changes out.
class LcdAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit LcdAccessible(LcdWidget* lcd_) : QAccessibleWidget(lcd_, QAccessible::Terminal), lcd(lcd_) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? lcd->described_text() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        return state;
    }

    [[nodiscard]] QString text(int start, int end) const override {
        return lcd->described_text().mid(start, end - start);
    }

    [[nodiscard]] int characterCount() const override { return static_cast<int>(lcd->described_text().size()); }

    /// Characters lie side by side across the LCD.
    [[nodiscard]] QRect characterRect(int offset) const override {
        const QRect area = picture();
        const int width = area.width() / DISPLAY_WIDTH;
        return {area.left() + offset % DISPLAY_WIDTH * width, area.top(), width, area.height()};
    }

    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
        const QRect area = picture();
        const int offset = (point.x() - area.left()) * DISPLAY_WIDTH / std::max(1, area.width());
        return area.contains(point) ? offset : -1;
    }

    // Nothing can be selected, and there is no caret.
    void selection(int, int* start, int* end) const override { *start = *end = 0; }
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    /// On the screen, without what is beside the picture.
    [[nodiscard]] QRect picture() const { return lcd->picture_area().toRect().translated(rect().topLeft()); }

    LcdWidget* lcd;
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
    auto* lcd = qobject_cast<LcdWidget*>(object);
    return lcd == nullptr ? nullptr : new LcdAccessible(lcd);
}

} // namespace

void install_lcd_accessibility() { QAccessible::installFactory(make_interface); }

void announce_lcd_text(QWidget* lcd, const QString& before, const QString& now) {
    QAccessibleTextUpdateEvent event(lcd, 0, before, now);
    QAccessible::updateAccessibility(&event);
}

} // namespace quillon
