// Placing and forwarding.
#include "desktop/main_window.h"

#include "core/charset.h"
#include "desktop/dialogs.h"
#include "desktop/key_events.h"
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/file_services.h"
#include "shell/startup.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

namespace quillon {
namespace {

/// Whether the window system lets programs place their windows.
bool can_place_windows() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

/// A path as the file system has it, whatever its bytes.
std::string native_path(const QString& path) { return path.toLocal8Bit().toStdString(); }

} // namespace

MainWindow::MainWindow(Simulator& simulator_)
    : simulator(simulator_), lcd(new LcdWidget(simulator_)),
      ticker(
          simulator_, [this](bool changed) { after_tick(changed); }, this),
      messages(this) {
    const CommandHandler handler = [this](int command) { run_host_command(simulator, command); };
    build_menu_bar(*this, simulator.machine.catalogue, handler);
    checks = build_toolbar(*this, simulator.machine.catalogue, handler, [this](QMenu& menu) { fill_recent(menu); });
    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(lcd);
    setCentralWidget(centre);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    connect_machine();
    connect_window();
    use_file_services(simulator);
}

MainWindow::~MainWindow() = default;

void MainWindow::connect_machine() {
    Host& host = simulator.machine.host;
    host.play_tone = [this](std::span<const std::uint8_t> image) { sound.play(image); };
    host.stop_tone = [this] { sound.stop(); };
    host.show_message = [this](const std::string& text, MessageIcon icon) {
        messages.show(QString::fromUtf8(text), icon);
    };
    host.resize_window = [this] { resize_to_zoom(); };
    host.copy_text = [](std::string_view text) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(to_unicode(clipboard_part(text))));
    };
    host.paste_text = [] { return pasted_part(QGuiApplication::clipboard()->text().toStdString()); };
    QElapsedTimer clock;
    clock.start();
    host.milliseconds = [clock] { return static_cast<std::uint32_t>(clock.elapsed()); };
}

void MainWindow::connect_window() {
    simulator.window.perform = [this](HostCommand command) { perform(command); };
    simulator.window.refresh = [this] { refresh(); };
    simulator.window.toggle_soft_keyboard = [this] { show_soft_keyboard(); };
}

void MainWindow::start(const QString& listing) {
    const bool usable = start_simulator(simulator);
    refresh();
    resize_to_zoom();
    place_on_screen();
    show();
    activateWindow();
    setFocus();
    if (!usable)
        return;
    if (!listing.isEmpty())
        open_listing(simulator, native_path(listing));
    ticker.arm();
}

/// A quarter of the free width from the left, an eighth of the free height from the top.
void MainWindow::place_on_screen() {
    const QRect area = screen()->availableGeometry();
    const QSize size = sizeHint();
    move(area.left() + (area.width() - size.width()) / 4, area.top() + (area.height() - size.height()) / 8);
}

void MainWindow::after_tick(bool picture_changed) {
    if (picture_changed)
        lcd->update();
    if (soft_keyboard != nullptr)
        soft_keyboard->refresh();
}

void MainWindow::refresh() {
    const Machine& m = simulator.machine;
    setWindowTitle(QString::fromLocal8Bit(window_title(simulator)));
    checks[COMMAND_ASCII_MODE]->setChecked(m.ascii_mode != 0);
    checks[COMMAND_OVERDRIVE]->setChecked(m.overdrive != 0);
    checks[COMMAND_SOFT_KEYBOARD]->setChecked(m.soft_open != 0);
    lcd->update();
    if (isVisible())
        ticker.arm();
}

void MainWindow::resize_to_zoom() {
    lcd->setFixedSize(lcd->sizeHint());
    lcd->update();
}

void MainWindow::perform(HostCommand command) {
    switch (command) {
    case COMMAND_OPEN: return open_listing_dialog();
    case COMMAND_EXIT: close(); return;
    case COMMAND_EDITOR: return start_editor();
    case COMMAND_HELP: return open_manual();
    default: break;
    }
    if (command >= COMMAND_ZOOM_1 && command <= COMMAND_ZOOM_4)
        resize_to_zoom();
}

void MainWindow::open_listing_dialog() {
    const auto choice = choose_listing(this, simulator.settings);
    if (!choice)
        return;
    simulator.settings.file_type = choice->file_type;
    open_listing(simulator, native_path(choice->path));
}

void MainWindow::start_editor() {
    const auto call = editor_call(simulator);
    if (call && !launch_editor(*call))
        messages.show(QString::fromUtf8(lookup_message(simulator.machine.catalogue, "SYSTEM", 10)),
                      MessageIcon::WARNING);
}

void MainWindow::fill_recent(QMenu& menu) {
    menu.clear();
    for (const std::string& path : simulator.recent) {
        QAction* action = menu.addAction(QString::fromLocal8Bit(path).replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, this, [this, path] { open_listing(simulator, path); });
    }
}

/// Closing is put off: the machine may be in the middle of a tick that the keyboard itself asked for.
void MainWindow::show_soft_keyboard() {
    if (simulator.machine.soft_open == 0) {
        if (soft_keyboard != nullptr)
            soft_keyboard.release()->deleteLater();
        return;
    }
    soft_keyboard = std::make_unique<SoftKeyboardWindow>(simulator, this, !can_place_windows());
    if (!can_place_windows())
        centralWidget()->layout()->addWidget(soft_keyboard.get());
    soft_keyboard->dock();
    soft_keyboard->show();
    activateWindow();
}

bool MainWindow::event(QEvent* event) {
    // Alt belongs to the machine: it must not reach the menu's access keys.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QMainWindow::event(event);
}

bool MainWindow::focusNextPrevChild(bool) { return false; } // Tab is the machine's single step

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F10) {
        menuBar()->setActiveAction(menuBar()->actions().first());
        return;
    }
    follow_modifiers(simulator.modifiers, *event);
    if (const auto key = key_down_from(*event, simulator.machine.ascii_mode != 0))
        push_key_event(simulator.keys, *key);
}

void MainWindow::keyReleaseEvent(QKeyEvent* event) {
    follow_modifiers(simulator.modifiers, *event);
    if (event->isAutoRepeat())
        return;
    for (const int code : key_codes_of(*event))
        push_key_event(simulator.keys, {.kind = KeyEvent::Kind::UP, .key = code});
}

void MainWindow::focusOutEvent(QFocusEvent* event) {
    release_all_keys(simulator.keys);
    simulator.modifiers = {};
    QMainWindow::focusOutEvent(event);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && soft_keyboard != nullptr)
        soft_keyboard->dock();
}

void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    if (soft_keyboard != nullptr)
        soft_keyboard->dock();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (soft_keyboard != nullptr)
        soft_keyboard->dock();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    ticker.stop();
    soft_keyboard.reset();
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && event->mimeData()->urls().first().isLocalFile())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    event->acceptProposedAction();
    activateWindow();
    if (!urls.isEmpty())
        open_listing(simulator, native_path(urls.first().toLocalFile()));
}

} // namespace quillon
