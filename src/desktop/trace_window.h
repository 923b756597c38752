// SPDX-License-Identifier: MIT
// The trace window, beside the main window: the line executed last and the next one, and the variables. While it is
// open the machine takes one statement at a time; a click anywhere on it asks for one. Its button opens the window of
// the extended variables. All keys that the two get are the machine's.
#pragma once

#include "desktop/machine_keyboard.h"
#include "shell/trace_texts.h"

#include <QDialog>
#include <QPointer>

#include <array>

class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QScrollArea;

namespace quillon {

/// The variables that the trace window has no room for.
class ExtendedVariablesWindow : public QDialog {
    Q_OBJECT

public:
    ExtendedVariablesWindow(const Machine& machine, MachineKeyboard& keyboard, QWidget* main_window);

    void refresh();
    void reset();

private:
    const Machine& machine;
    QPlainTextEdit* field;
};

class TraceWindow : public QDialog {
    Q_OBJECT

public:
    /// Opens empty, beside the main window.
    TraceWindow(Session& session, MachineKeyboard& keyboard, QWidget* main_window);

    /// Shows what the machine says now, and gives the keyboard back to the main window.
    void refresh();

    /// Empties all fields.
    void reset();

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] QString text(int number, const char* otherwise = "") const;
    QWidget* position_group();
    QWidget* variables_group();
    QWidget* bottom_row();
    /// Beside the main window, as high as its content or the screen; the variables are scrolled then.
    void take_place(QScrollArea& scroll);
    QLineEdit* add_field(QGridLayout& grid, int row, int column, const QString& label);
    void show_texts();
    void toggle_extended();

    Session& session;
    const Machine& machine; ///< of the session
    MachineKeyboard& keyboard;
    QWidget* main_window;
    TraceTexts texts;
    QPlainTextEdit* last = nullptr;
    QPlainTextEdit* next = nullptr;
    QLineEdit* dollar = nullptr;
    QLineEdit* statement_kind = nullptr;
    std::array<QLineEdit*, TRACED_CELLS> variables{};
    QPointer<ExtendedVariablesWindow> extended;
};

} // namespace quillon
