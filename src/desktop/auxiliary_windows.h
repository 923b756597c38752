// SPDX-License-Identifier: MIT
// The windows beside the main one that come and go with the machine's modes: the soft keyboard and the trace window.
#pragma once

#include "desktop/soft_keyboard_window.h"
#include "desktop/trace_window.h"

#include <QPointer>

#include <memory>

namespace quillon {

class AuxiliaryWindows : public QObject {
    Q_OBJECT

public:
    /// What is typed into the windows goes to `keyboard`.
    AuxiliaryWindows(Session& session, MachineKeyboard& keyboard, QWidget* main_window);
    ~AuxiliaryWindows() override;

    /// Opens and closes what the record's modes say. Not to be called within a tick.
    void follow_machine();

    /// Draws anew what the last tick changed.
    void refresh_soft_keyboard();

    void refresh_trace();
    void reset_trace();

    /// Puts the soft keyboard back to the main window's lower edge.
    void dock();

    void close_all();

private:
    void open_soft_keyboard();
    void open_trace();
    void trace_closed();

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    MachineKeyboard& keyboard;
    QWidget* main_window;
    std::unique_ptr<SoftKeyboardWindow> soft_keyboard;
    QPointer<TraceWindow> trace;
};

} // namespace quillon
