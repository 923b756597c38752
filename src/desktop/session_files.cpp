// SPDX-License-Identifier: MIT
// Dialogs around session files and saved states.
#include "desktop/session_files.h"

#include "core/machine.h"
#include "desktop/catalogue_text.h"
#include "session/machine_image.h"
#include "session/replay.h"
#include "shell/window_texts.h"

#include <QFileDialog>

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

void write(QWidget& parent, const Session& session, const WindowText& title, const char* filter,
           const std::function<std::string()>& bytes, const TextShower& show) {
    const QString path =
        QFileDialog::getSaveFileName(&parent, title_of(session, title), {}, QString::fromLatin1(filter));
    if (!path.isEmpty() && !session.disk.write_file(native_path(path), bytes()))
        show(text_of(session, CANNOT_SAVE_FILE));
}

} // namespace

void save_session(QWidget& parent, const Session& session, const TextShower& show) {
    const auto text = [&session] {
        bool repeats = true;
        return session_text(record_session(session, repeats));
    };
    write(parent, session, MENU_SAVE_SESSION, "*.session", text, show);
}

void save_state_file(QWidget& parent, Session& session, const TextShower& show) {
    const auto image = [&session] { return moment_image(present_moment(session)); };
    write(parent, session, MENU_SAVE_STATE, "*.state", image, show);
}

void restore_state_file(QWidget& parent, Session& session, const TextShower& show) {
    const QString path =
        QFileDialog::getOpenFileName(&parent, title_of(session, MENU_RESTORE_STATE), {}, QStringLiteral("*.state"));
    if (path.isEmpty())
        return;
    FileContents file = session.disk.read_file(native_path(path), IMAGE_SIZE_MAX, FileKind::ORDINARY);
    if (file.status != ReadStatus::READ)
        return show(text_of(session, CANNOT_READ_FILE));
    ImageFault fault{};
    if (!read_moment_image(file.bytes, fault))
        return show(text_of(session, fault == ImageFault::OTHER_VERSION ? STATE_OF_OTHER_VERSION : STATE_DAMAGED));
    session_input(session, restore_input(std::move(file.bytes)));
    session.window.refresh();
}

} // namespace quillon
