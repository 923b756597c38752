// SPDX-License-Identifier: MIT
// Opening and closing windows beside the main one.
#include "desktop/auxiliary_windows.h"

#include "desktop/window_places.h"
#include "shell/commands.h"

#include <QMainWindow>
#include <QVBoxLayout>

namespace quillon {

AuxiliaryWindows::AuxiliaryWindows(Session& session_, MachineKeyboard& keyboard_, QWidget* main_window_)
    : QObject(main_window_), session(session_), simulator(session_.simulator), keyboard(keyboard_),
      main_window(main_window_) {}

AuxiliaryWindows::~AuxiliaryWindows() = default;

void AuxiliaryWindows::follow_machine() {
    const Machine& m = simulator.machine;
    if (!m.soft.soft_open)
        soft_keyboard.reset();
    else if (soft_keyboard == nullptr)
        open_soft_keyboard();
    if (!m.trace.trace_mode && trace != nullptr)
        trace->close();
    else if (m.trace.trace_mode && trace == nullptr)
        open_trace();
}

void AuxiliaryWindows::open_soft_keyboard() {
    soft_keyboard = std::make_unique<SoftKeyboardWindow>(session, main_window, !can_place_windows());
    if (!can_place_windows())
        qobject_cast<QMainWindow*>(main_window)->centralWidget()->layout()->addWidget(soft_keyboard.get());
    soft_keyboard->dock();
    soft_keyboard->show();
    main_window->activateWindow();
}

void AuxiliaryWindows::open_trace() {
    trace = new TraceWindow(session, keyboard, main_window);
    connect(trace, &QDialog::finished, this, &AuxiliaryWindows::trace_closed);
    trace->show();
    trace->refresh();
    main_window->activateWindow();
}

/// Closed by its user, the window takes the single steps with it.
void AuxiliaryWindows::trace_closed() {
    trace.clear();
    if (simulator.machine.trace.trace_mode)
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_TRACE}});
}

void AuxiliaryWindows::refresh_soft_keyboard() {
    if (soft_keyboard != nullptr)
        soft_keyboard->refresh();
}

void AuxiliaryWindows::refresh_trace() {
    if (trace != nullptr)
        trace->refresh();
}

void AuxiliaryWindows::reset_trace() {
    if (trace != nullptr)
        trace->reset();
}

void AuxiliaryWindows::dock() {
    if (soft_keyboard != nullptr)
        soft_keyboard->dock();
}

void AuxiliaryWindows::close_all() {
    soft_keyboard.reset();
    if (trace != nullptr)
        trace->close();
}

} // namespace quillon
