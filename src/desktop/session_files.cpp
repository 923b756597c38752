// SPDX-License-Identifier: MIT
// Menus and dialogs around session files and saved states.
#include "desktop/session_files.h"

#include "desktop/catalogue_text.h"
#include "files/places.h"
#include "session/machine_image.h"
#include "session/replay.h"
#include "shell/window_texts.h"

#include <QDateTime>
#include <QFileDialog>
#include <QLocale>
#include <QMenu>

#include <utility>

namespace quillon {
namespace {

QString text_of(const Session& session, const WindowText& row) {
    return catalogue_text(session.simulator.machine.around->catalogue, row.section, row.number, row.built_in);
}

/// A menu entry as a title: without its access key and dots.
QString title_of(const Session& session, const WindowText& row) {
    return text_of(session, row).remove(QLatin1Char('&')).remove(QLatin1String("..."));
}

std::string native_path(const QString& path) { return path.toLocal8Bit().toStdString(); }

void write(const Session& session, const std::string& path, std::string_view bytes, const TextShower& show) {
    if (!session.disk.write_file(path, bytes))
        show(text_of(session, CANNOT_SAVE_FILE));
}

/// A file to write, empty when its user thinks better of it.
std::string ask_for_new_file(QWidget* parent, const Session& session, const WindowText& title, const char* filter) {
    return native_path(QFileDialog::getSaveFileName(parent, title_of(session, title), {}, QString::fromLatin1(filter)));
}

void save_session(QWidget* parent, const Session& session, const TextShower& show) {
    const std::string path = ask_for_new_file(parent, session, MENU_SAVE_SESSION, "*.session");
    if (path.empty())
        return;
    bool repeats = true;
    write(session, path, session_text(record_session(session, repeats)), show);
}

void save_state_as(Session& session, const std::string& path, const TextShower& show) {
    if (!path.empty())
        write(session, path, moment_image(present_moment(session)), show);
}

void restore_state_from(Session& session, const std::string& path, const TextShower& show) {
    if (path.empty())
        return;
    FileContents file = session.disk.read_file(path, IMAGE_SIZE_MAX, FileKind::ORDINARY);
    if (file.status != ReadStatus::READ)
        return show(text_of(session, CANNOT_READ_FILE));
    ImageFault fault{};
    if (!read_moment_image(file.bytes, fault))
        return show(text_of(session, fault == ImageFault::OTHER_VERSION ? STATE_OF_OTHER_VERSION : STATE_DAMAGED));
    session_input(session, restore_input(std::move(file.bytes)));
    session.window.refresh();
}

constexpr const char* STATE_FILTER = "*.state";

std::string slot_path(const std::string& folder, int slot) {
    return folder + "/slot-" + std::to_string(slot) + ".state";
}

/// What is done with a state file: saving to it, or restoring from it.
using StateUse = std::function<void(const std::string& path)>;

/// A menu of the slots, filled each time it opens: with the time of each state, and those that are empty greyed out
/// where one is to be restored.
QMenu* make_slot_menu(QMenu& parent, const Session& session, const std::string& folder, const WindowText& title,
                      bool needs_file, const StateUse& use, const std::function<std::string()>& ask) {
    auto* menu = new QMenu(text_of(session, title), &parent);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [=, &session] {
        menu->clear();
        for (int slot = 1; slot <= STATE_SLOTS && !folder.empty(); ++slot) {
            const std::string path = slot_path(folder, slot);
            const QFileInfo file(QString::fromLocal8Bit(path));
            const QString when = file.exists() ? QLocale().toString(file.lastModified(), QLocale::ShortFormat)
                                               : text_of(session, STATE_SLOT_EMPTY);
            QAction* entry = menu->addAction(text_of(session, STATE_SLOT).arg(slot).arg(when));
            entry->setEnabled(file.exists() || !needs_file);
            QObject::connect(entry, &QAction::triggered, menu, [=] { use(path); });
        }
        menu->addSeparator();
        QObject::connect(menu->addAction(text_of(session, STATE_FILE)), &QAction::triggered, menu, [=] { use(ask()); });
    });
    return menu;
}

} // namespace

void add_session_entries(QMenu& menu, QAction* before, Session& session, const std::string& folder,
                         const TextShower& show) {
    QWidget* window = menu.parentWidget();
    auto* save = new QAction(text_of(session, MENU_SAVE_SESSION), &menu);
    QObject::connect(save, &QAction::triggered, window, [=, &session] { save_session(window, session, show); });
    menu.insertAction(before, save);
    const StateUse save_state = [=, &session](const std::string& path) {
        if (!folder.empty())
            create_folder(folder);
        save_state_as(session, path, show);
    };
    menu.insertMenu(before, make_slot_menu(menu, session, folder, MENU_SAVE_STATE, false, save_state, [=, &session] {
                        return ask_for_new_file(window, session, MENU_SAVE_STATE, STATE_FILTER);
                    }));
    const StateUse restore = [=, &session](const std::string& path) { restore_state_from(session, path, show); };
    menu.insertMenu(before, make_slot_menu(menu, session, folder, MENU_RESTORE_STATE, true, restore, [=, &session] {
                        return native_path(QFileDialog::getOpenFileName(window, title_of(session, MENU_RESTORE_STATE),
                                                                        {}, QString::fromLatin1(STATE_FILTER)));
                    }));
    menu.insertSeparator(before);
}

} // namespace quillon
