// SPDX-License-Identifier: MIT
// The debugger beside the main window: the listing of the current area with breakpoints in its margin, the stack, the
// variables, and a slider over the session's time. Its keys are those of common debuggers; the machine has its own only
// in its own window.
#pragma once

#include "desktop/debug_control.h"

#include <QDialog>
#include <QElapsedTimer>

#include <array>
#include <functional>

class QAction;
class QLabel;
class QListWidget;
class QTableWidget;
class QTableWidgetItem;
class QToolBar;

namespace quillon {

class TimeSlider;
class WatchList;

class DebuggerWindow : public QDialog {
    Q_OBJECT

public:
    /// `note` shows what the user should know.
    DebuggerWindow(Session& session, DebugControl& control, const std::function<void(const QString&)>& note,
                   QWidget* main_window);

    /// Shows where the machine is.
    void refresh();

    /// Shows where the machine is; while it runs, at most some times a second.
    void follow_tick();

private:
    void build_buttons(QToolBar& bar);
    QAction* add_button(QToolBar& bar, const struct WindowText& text, const QKeySequence& key,
                        const std::function<void()>& act);
    void show_status();
    void fill_listing();
    void show_position();
    void show_stack();
    void show_cells();
    void show_time();
    void show_breakpoints();
    void toggle_breakpoint(int row);
    void open_line_menu(const QPoint& place);
    void open_cell_menu(const QPoint& place);
    void go_to_line(int row, bool backward);
    void go_back_to_change(CellIndex cell);
    void change_cell(const QTableWidgetItem& item);
    [[nodiscard]] QString text(const WindowText& text) const;

    Session& session;
    const Machine& machine; ///< of the session
    DebugControl& control;
    std::function<void(const QString&)> note;
    QLabel* status = nullptr;
    QTableWidget* listing = nullptr;
    QListWidget* stack = nullptr;
    QTableWidget* cells = nullptr;
    WatchList* watches = nullptr;
    TimeSlider* slider = nullptr;
    QLabel* time = nullptr;
    QAction* go_on = nullptr;
    QAction* pause = nullptr;
    std::shared_ptr<const Listing> shown_listing; ///< of the rows
    int shown_area = -1;
    int marked_row = -1;                          ///< the row that shows the current statement
    std::array<Variable, CELL_COUNT> shown_cells; ///< as they were when the machine stood last
    bool filling = false;                         ///< items change by the window's own doing
    QElapsedTimer since_refresh;
};

} // namespace quillon
