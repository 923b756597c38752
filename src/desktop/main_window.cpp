// SPDX-License-Identifier: MIT
// Placing and forwarding.
#include "desktop/main_window.h"

#include "core/charset.h"
#include "core/setting_ranges.h"
#include "desktop/about_dialog.h"
#include "desktop/catalogue_text.h"
#include "desktop/configuration_dialog.h"
#include "desktop/debugger_window.h"
#include "desktop/dialogs.h"
#include "desktop/error_detail_dialog.h"
#include "desktop/plain_text.h"
#include "desktop/window_places.h"
#include "files/file_services.h"
#include "files/host_disk.h"
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/editor_call.h"
#include "shell/startup.h"
#include "shell/window_texts.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace quillon {
namespace {

/// A path as the file system has it.
std::string native_path(const QString& path) { return path.toLocal8Bit().toStdString(); }

/// The same of a file's address, whose bytes need not be text in any encoding.
std::string native_path(const QUrl& address) {
    return QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

} // namespace

MainWindow::MainWindow(Session& session_, StateFiles& files_)
    : session(session_), simulator(session_.simulator), files(files_), lcd(new LcdWidget(session_)),
      debugging(new DebugControl(session_, this)),
      ticker(
          session_, [this] { return debugging->tick(); }, [this](bool changed) { after_tick(changed); }, this),
      messages(this), keyboard(
                          session_, [this](const QKeyEvent& event) { return take_window_key(event); }, this),
      windows(session_, keyboard, this) {
    const CommandHandler handler = [this](int command) {
        session_input(session, {.verb = InputVerb::HOST_COMMAND, .numbers = {command}});
    };
    build_menu_bar(*this, simulator.machine.around->catalogue, handler);
    add_debug_entries();
    checks =
        build_toolbar(*this, simulator.machine.around->catalogue, handler, [this](QMenu& menu) { fill_recent(menu); });
    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(lcd);
    setCentralWidget(centre);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    setAcceptDrops(true);
    lcd->setFocusPolicy(Qt::StrongFocus);
    keyboard.watch(*lcd);
    connect(debugging, &DebugControl::moved, this, &MainWindow::follow_debugger);
    connect_machine();
    connect_window();
    simulator.disk = host_disk();
    use_file_services(simulator);
}

void MainWindow::connect_machine() {
    Host& host = simulator.around.host;
    host.play_tone = [this](std::span<const std::uint8_t> image) { sound.play(image); };
    host.stop_tone = [this] { sound.stop(); };
    host.show_message = [this](const std::string& text, MessageIcon icon) {
        messages.show(QString::fromUtf8(text), icon);
    };
    host.refresh_trace = [this] { windows.refresh_trace(); };
    host.reset_trace = [this] { windows.reset_trace(); };
    host.resize_window = [this] { resize_to_zoom(); };
    host.copy_text = [](std::string_view text) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(to_unicode(clipboard_part(text))));
    };
    host.paste_text = [] { return pasted_part(QGuiApplication::clipboard()->text().toStdString()); };
    QElapsedTimer clock;
    clock.start();
    host.milliseconds = [clock] { return static_cast<std::uint32_t>(clock.elapsed()); };
}

/// Windows are put off until the tick that asks for them is over.
void MainWindow::connect_window() {
    simulator.window.perform = [this](HostCommand command) {
        QTimer::singleShot(0, this, [this, command] { carry_out(command); });
    };
    simulator.window.toggle_trace = simulator.window.toggle_soft_keyboard =
        simulator.window.refresh = [this] { QTimer::singleShot(0, this, [this] { refresh(); }); };
    simulator.window.note = [this](const std::string& text) {
        QTimer::singleShot(0, this, [this, text] { show_note(QString::fromLocal8Bit(text)); });
    };
}

void MainWindow::start(const std::string& listing) {
    read_state(simulator, files);
    const bool usable = start_session(session, listing);
    refresh();
    resize_to_zoom();
    place_on_screen();
    show();
    activateWindow();
    lcd->setFocus();
    if (usable)
        ticker.arm();
}

/// A quarter of the free width from the left, an eighth of the free height from the top.
void MainWindow::place_on_screen() {
    const QRect area = screen()->availableGeometry();
    move(area.left() + (area.width() - width()) / 4, area.top() + (area.height() - height()) / 8);
}

void MainWindow::after_tick(bool picture_changed) {
    save_when_due(simulator, files, steady_milliseconds());
    if (picture_changed)
        lcd->refresh();
    windows.refresh_soft_keyboard();
    windows.dock();
    if (debugger != nullptr)
        debugger->follow_tick();
    if (debugging->is_standing())
        ticker.stop();
}

/// The clock stands with the machine; what is beside the LCD may be of another moment now.
void MainWindow::follow_debugger() {
    lcd->refresh();
    refresh();
    if (debugging->is_standing())
        ticker.stop();
    else
        ticker.arm();
}

/// Entries that are the window's alone, and no commands of the machine's host.
void MainWindow::add_debug_entries() {
    QMenu* file = menuBar()->actions()[0]->menu();
    QMenu* command = menuBar()->actions()[1]->menu();
    const auto show = [this](const QString& text) { show_warning(text); };
    add_session_entries(*file, file->actions().last(), session, files.paths.folder, show);
    const MessageCatalogue& catalogue = simulator.machine.around->catalogue;
    command->addAction(catalogue_text(catalogue, MENU_DEBUGGER.section, MENU_DEBUGGER.number, MENU_DEBUGGER.built_in),
                       this, [this] { open_debugger(); });
}

void MainWindow::open_debugger() {
    if (debugger == nullptr) {
        const auto show = [this](const QString& text) { show_warning(text); };
        debugger = new DebuggerWindow(session, *debugging, show, this);
        debugger->move(frameGeometry().bottomLeft());
    }
    debugger->refresh();
    debugger->show();
    debugger->activateWindow();
}

/// While an error is on the display, its place can be looked at.
void MainWindow::show_error() {
    ErrorPlaces places;
    if (const auto line = failed(simulator.machine) ? current_file_line(simulator.machine) : std::nullopt) {
        places.show_in_listing = [this] { open_debugger(); };
        places.open_editor = [this, line] { start_editor(*line); };
    }
    show_error_detail(simulator.machine, places, this);
}

void MainWindow::refresh() {
    if (leaving)
        return;
    const Machine& m = simulator.machine;
    setWindowTitle(QString::fromLocal8Bit(window_title(simulator)));
    for (const auto& [command, action] : checks)
        action->setChecked(find_host_command(command)->is_on(m));
    lcd->refresh();
    windows.follow_machine();
    if (debugger != nullptr && debugger->isVisible())
        debugger->refresh();
    if (ticker.is_armed() && !debugging->is_standing())
        ticker.arm();
}

void MainWindow::resize_to_zoom() {
    fit_to_screen();
    lcd->update();
    for (QLayout* part : {centralWidget()->layout(), layout()}) // the size is wanted now, not after the next events
        part->activate();
    const QPoint place = quillon::place_on_screen(*this, frameGeometry().topLeft(), frameGeometry().size());
    if (isVisible() && can_place_windows() && place != frameGeometry().topLeft())
        move(place);
}

/// The LCD has what the screen leaves beside frame, menus, toolbar and a panel.
void MainWindow::fit_to_screen() {
    const int others = sizeHint().height() - lcd->minimumHeight();
    lcd->fit_into(screen()->availableGeometry().size() - frame_extent(*this) - QSize(0, others));
}

void MainWindow::carry_out(HostCommand command) {
    if (leaving)
        return;
    switch (command) {
    case COMMAND_OPEN: return open_listing_dialog();
    case COMMAND_EXIT: close(); return;
    case COMMAND_EDITOR: return start_editor(1);
    case COMMAND_ABOUT: return show_about_dialog(simulator.machine.around->catalogue, this);
    case COMMAND_CONFIGURE: return configure();
    case COMMAND_ERROR_DETAIL: return show_error();
    case COMMAND_HELP: return show_manual();
    default: return resize_to_zoom();
    }
}

void MainWindow::configure() {
    auto* dialog = new ConfigurationDialog(
        session, [this](const QString& text) { show_warning(text); }, this);
    connect(dialog, &QDialog::finished, this, &MainWindow::refresh);
    dialog->open();
    if (!debugging->is_standing())
        ticker.arm();
}

/// Below the display, for some seconds.
void MainWindow::show_note(const QString& text) {
    constexpr int MILLISECONDS = 5000;
    QToolTip::showText(lcd->mapToGlobal(QPoint(0, lcd->height())), plain_tooltip(text), lcd, {}, MILLISECONDS);
}

void MainWindow::show_warning(const QString& text) { messages.show(text, MessageIcon::WARNING); }

void MainWindow::load(const std::string& path) { session_input(session, {.verb = InputVerb::LOAD, .text = path}); }

void MainWindow::open_listing_dialog() {
    const auto choice = choose_listing(this, simulator.machine.around->catalogue, simulator.preferences);
    if (!choice)
        return;
    simulator.preferences.file_type = choice->file_type;
    load(native_path(choice->path));
}

/// When the editor cannot be started another one can be chosen.
void MainWindow::start_editor(int line) {
    const auto choose_another = [this] {
        show_warning(catalogue_text(simulator.machine.around->catalogue, "SYSTEM", 10));
        configure();
    };
    if (const auto call = editor_call(simulator, line))
        launch_editor(*call, choose_another);
}

void MainWindow::show_manual() {
    open_manual([this](const QString& path) {
        const MessageCatalogue& catalogue = simulator.machine.around->catalogue;
        if (path.isEmpty())
            show_warning(catalogue_text(catalogue, "HELP", 1));
        else
            show_warning(catalogue_text(catalogue, "HELP", 0) + QLatin1String("\n") + path);
    });
}

void MainWindow::fill_recent(QMenu& menu) {
    menu.clear();
    for (const std::string& path : simulator.recent) {
        QAction* action = menu.addAction(QString::fromLocal8Bit(path).replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, this, [this, path] { load(path); });
    }
}

bool MainWindow::event(QEvent* event) {
    // Alt belongs to the machine: it must not reach the menu's access keys.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QMainWindow::event(event);
}

/// What a button of the toolbar has no use for. The LCD's keys do not come here.
void MainWindow::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QToolButton*>(focusWidget());
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        lcd->setFocus();
    else if (button != nullptr && is_enter)
        button->click();
    else
        keyboard.press(*event);
}

void MainWindow::keyReleaseEvent(QKeyEvent* event) { keyboard.release(*event); }

bool MainWindow::take_window_key(const QKeyEvent& event) {
    const bool is_shortcut = event.modifiers().testFlag(Qt::ControlModifier) &&
                             !event.modifiers().testFlag(Qt::AltModifier) && simulator.machine.settings.ascii_mode;
    switch (is_shortcut || event.key() == Qt::Key_F10 ? event.key() : 0) {
    case Qt::Key_F10: focus_controls(event.modifiers().testFlag(Qt::ShiftModifier)); return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal: change_zoom(simulator.machine.settings.zoom + 1); return true;
    case Qt::Key_Minus: change_zoom(simulator.machine.settings.zoom - 1); return true;
    case Qt::Key_0: change_zoom(1); return true;
    default: return false;
    }
}

void MainWindow::change_zoom(int zoom) {
    adjust_settings(session, [zoom](Simulator& s) {
        s.machine.settings.zoom = std::clamp(zoom, SettingRanges::zoom.lowest, SettingRanges::zoom.highest);
    });
    resize_to_zoom();
}

/// The way from the LCD to menu bar or toolbar without a mouse; Escape leads back.
void MainWindow::focus_controls(bool toolbar) {
    auto* bar = findChild<QToolBar*>();
    activateWindow();                         // the key may have been typed into another window
    setAttribute(Qt::WA_KeyboardFocusChange); // the style shows where the focus is
    if (toolbar)
        bar->widgetForAction(bar->actions().first())->setFocus(Qt::TabFocusReason);
    else
        menuBar()->setActiveAction(menuBar()->actions().first());
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        windows.dock();
}

/// It may be another screen now.
void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    fit_to_screen();
    windows.dock();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    windows.dock();
}

/// Closing saves first: while the window is still there, its user can do something about a failure.
void MainWindow::closeEvent(QCloseEvent* event) {
    const std::vector<std::string> unsaved = leaving ? std::vector<std::string>() : save_state(simulator, files);
    if (!unsaved.empty()) {
        event->ignore();
        return ask_about_unsaved(unsaved);
    }
    if (!leaving)
        leave(EXIT_SUCCESS);
    QMainWindow::closeEvent(event);
}

void MainWindow::ask_about_unsaved(const std::vector<std::string>& paths) {
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Error."),
                                QString::fromUtf8(unsaved_text(simulator, paths)),
                                QMessageBox::Retry | QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QDialog::finished, this, [this](int button) {
        if (button == QMessageBox::Retry)
            close();
        else if (button == QMessageBox::Discard)
            leave(EXIT_FAILURE);
    });
    box->open();
}

void MainWindow::end() {
    const std::vector<std::string> unsaved = save_state(simulator, files);
    if (!unsaved.empty())
        std::fputs(unsaved_text(simulator, unsaved).c_str(), stderr);
    leave(unsaved.empty() ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// Whatever windows are open, the program does not wait for them.
void MainWindow::leave(int status) {
    leaving = true;
    ticker.stop();
    windows.close_all();
    QApplication::exit(status);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls(); // empty when the program that drags has gone meanwhile
    if (!urls.isEmpty() && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    event->acceptProposedAction();
    activateWindow();
    if (!urls.isEmpty())
        load(native_path(urls.first()));
}

} // namespace quillon
