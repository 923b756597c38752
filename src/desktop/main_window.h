// SPDX-License-Identifier: MIT
// The main window: places the toolbar, the LCD and the windows around it, and forwards events and commands. What they
// mean is the simulator's business.
#pragma once

#include "desktop/auxiliary_windows.h"
#include "desktop/debug_control.h"
#include "desktop/lcd_widget.h"
#include "desktop/menus.h"
#include "desktop/message_boxes.h"
#include "desktop/session_files.h"
#include "desktop/sound_output.h"
#include "desktop/ticker.h"
#include "files/state_files.h"

#include <QMainWindow>

namespace quillon {

class DebuggerWindow;

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Builds the window around a simulator whose catalogue is in place, and connects the simulator to it and to the
    /// disk.
    MainWindow(Session& session, StateFiles& files);

    /// Reads the state of the last run and starts the simulator, with this listing or, if it is empty, that of the last
    /// run; shows the window and lets the machine tick.
    void start(const std::string& listing);

    /// Ends the program without asking anything, as the system wants it: what cannot be saved is said on standard error
    /// and by the exit status.
    void end();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void connect_machine();
    void connect_window();
    void after_tick(bool picture_changed);
    void carry_out(HostCommand command);
    void refresh();
    void resize_to_zoom();
    void fit_to_screen();
    void load(const std::string& path);
    void open_listing_dialog();
    void add_debug_entries();
    void open_debugger();
    void follow_debugger();
    void show_error();
    void start_editor(int line);
    void configure();
    void show_manual();
    void show_note(const QString& text);
    void show_warning(const QString& text);
    void fill_recent(QMenu& menu);
    void place_on_screen();
    bool take_window_key(const QKeyEvent& event);
    void change_zoom(int zoom);
    void focus_controls(bool toolbar);
    void ask_about_unsaved(const std::vector<std::string>& paths);
    void leave(int status);

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    StateFiles& files;    ///< read at the start, saved after ticks and at the end
    LcdWidget* lcd;
    DebugControl* debugging;
    DebuggerWindow* debugger = nullptr; ///< made when it is first opened
    Ticker ticker;
    SoundOutput sound;
    MessageBoxes messages;
    CommandActions checks;
    MachineKeyboard keyboard;
    AuxiliaryWindows windows;
    bool leaving = false; ///< nothing opens any more
};

} // namespace quillon
