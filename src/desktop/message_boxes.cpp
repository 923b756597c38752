// SPDX-License-Identifier: MIT
// Showing message boxes.
#include "desktop/message_boxes.h"

#include <QMessageBox>
#include <QTimer>

namespace quillon {

MessageBoxes::MessageBoxes(QWidget* window_) : QObject(window_), window(window_) {}

void MessageBoxes::show(const QString& text, MessageIcon icon) {
    constexpr std::size_t WAITING_MAX = 20; // a program may ask for one with every tick
    if (waiting.size() < WAITING_MAX)
        waiting.push_back({text, icon});
    QTimer::singleShot(0, this, &MessageBoxes::show_next);
}

void MessageBoxes::show_next() {
    if (open_box != nullptr || waiting.empty())
        return;
    const Message message = waiting.front();
    waiting.pop_front();
    const auto icon = message.icon == MessageIcon::STOP ? QMessageBox::Critical : QMessageBox::Warning;
    open_box = new QMessageBox(icon, QStringLiteral("Error."), message.text, QMessageBox::Ok, window);
    open_box->setTextFormat(Qt::PlainText); // file names and catalogues are no markup
    open_box->setAttribute(Qt::WA_DeleteOnClose);
    connect(open_box, &QObject::destroyed, this, &MessageBoxes::show_next, Qt::QueuedConnection);
    open_box->open();
}

} // namespace quillon
