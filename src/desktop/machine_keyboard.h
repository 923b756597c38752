// SPDX-License-Identifier: MIT
// The PC's keyboard as the machine's: what is typed into the widgets that it watches goes to the key queue, and comes
// up again under the code it went down with. What it means there is the business of `shell` and `keys`.
#pragma once

#include "session/session.h"

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <functional>
#include <vector>

namespace quillon {

class MachineKeyboard : public QObject {
    Q_OBJECT

public:
    /// Whether a key is the window's own; if so it has been taken.
    using WindowKey = std::function<bool(const QKeyEvent& event)>;

    /// `window_key` is asked first about every key.
    MachineKeyboard(Session& session, WindowKey window_key, QObject* parent);

    /// From now on the machine gets every key that this widget would, also those that lead from field to field or close
    /// a dialog.
    void watch(QWidget& widget);

    void press(const QKeyEvent& event);
    void release(const QKeyEvent& event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow_modifiers(const QKeyEvent& event);
    void pass_modifiers(const Modifiers& now);
    /// A key that is down.
    struct HeldKey {
        quint32 place; ///< the system's code for the key itself, whatever it types; 0 where there is none
        int code;      ///< under which it went down
    };

    void let_go();
    void follow_focus(const QWindow* window);

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    WindowKey window_key;
    std::vector<QPointer<QWidget>> widgets;
    std::vector<HeldKey> held;
    bool after_dead_key = false;
};

} // namespace quillon
