// SPDX-License-Identifier: MIT
// The list of breakpoints and watches in the debugger, with buttons to add, edit and remove them, and what they log.
#pragma once

#include "desktop/debug_control.h"

#include <QWidget>

#include <functional>

class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace quillon {

struct WindowText;

class WatchList : public QWidget {
    Q_OBJECT

public:
    WatchList(Session& session, DebugControl& control, std::function<void(const QString&)> note);

    /// Opens the dialog with a watch: a new one when its `id` is 0.
    void edit(const Watch& watch);

private:
    void refresh();
    [[nodiscard]] const Watch* chosen() const;
    QPushButton* make_button(const WindowText& label, const std::function<void()>& act);
    [[nodiscard]] QString text(const WindowText& row) const;

    Session& session;
    DebugControl& control;
    std::function<void(const QString&)> note;
    QListWidget* list = nullptr;
    QPushButton* edit_button = nullptr;
    QPushButton* remove_button = nullptr;
    QPlainTextEdit* log = nullptr; ///< hidden until something is logged
};

} // namespace quillon
