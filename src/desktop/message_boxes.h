// SPDX-License-Identifier: MIT
// Message boxes, one after the other, each after the tick that asked for it.
#pragma once

#include "core/host.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <deque>

class QMessageBox;

namespace quillon {

class MessageBoxes : public QObject {
    Q_OBJECT

public:
    explicit MessageBoxes(QWidget* window);

    /// Shows a text with the caption "Error." when the boxes before it are closed; returns at once.
    void show(const QString& text, MessageIcon icon);

private:
    struct Message {
        QString text;
        MessageIcon icon;
    };

    void show_next();

    QWidget* window;
    std::deque<Message> waiting;
    QPointer<QMessageBox> open_box;
};

} // namespace quillon
