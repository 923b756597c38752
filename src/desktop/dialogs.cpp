// SPDX-License-Identifier: MIT
// System dialogs and programs.
#include "desktop/dialogs.h"

#include "desktop/catalogue_text.h"
#include "files/places.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>

namespace quillon {
namespace {

/// The filters of the open dialog, in the order of their numbers. Letters of both cases are matched.
QStringList listing_filters(const MessageCatalogue& catalogue) {
    return {catalogue_text(catalogue, "DLG_FILE", 2, "All") + QLatin1String("(*.*) (*)"),
            QStringLiteral("BAS(*.BAS) (*.BAS *.bas)"), QStringLiteral("TXT(*.TXT) (*.TXT *.txt)")};
}

constexpr const char* DESKTOP_OPENER = "xdg-open";

/// Hands a file to the desktop's own opener. Only its end tells that it found no program for the file.
void open_with_desktop(const QString& path, const std::function<void()>& failed) {
    if (QStandardPaths::findExecutable(QLatin1String(DESKTOP_OPENER)).isEmpty()) {
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
            failed();
        return;
    }
    auto* opener = new QProcess; // nobody's: what it opens may outlive the window
    QObject::connect(opener, &QProcess::finished, opener, [opener, failed](int status) {
        if (status != 0)
            failed();
        opener->deleteLater();
    });
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    opener->start(QLatin1String(DESKTOP_OPENER), {path});
}

} // namespace

std::optional<ListingChoice> choose_listing(QWidget* parent, const MessageCatalogue& catalogue,
                                            const Preferences& preferences) {
    const QStringList filters = listing_filters(catalogue);
    QString filter = filters[std::clamp(preferences.file_type - 1, 0, static_cast<int>(filters.size()) - 1)];
    // Whoever has opened nothing yet finds the examples.
    const std::string start = preferences.last_file.empty() ? find_examples(program_folder()) : preferences.last_file;
    const QString path =
        QFileDialog::getOpenFileName(parent, catalogue_text(catalogue, "DLG_FILE", 0, "Open file"),
                                     QString::fromLocal8Bit(start), filters.join(QLatin1String(";;")), &filter);
    if (path.isEmpty())
        return std::nullopt;
    return ListingChoice{path, static_cast<int>(filters.indexOf(filter)) + 1};
}

void launch_editor(const EditorCall& call, const std::function<void()>& failed) {
    QStringList arguments;
    for (const std::string& argument : call.arguments)
        arguments << QString::fromLocal8Bit(argument);
    if (call.program == DESKTOP_OPENER)
        open_with_desktop(arguments.last(), failed);
    else if (!QProcess::startDetached(QString::fromLocal8Bit(call.program), arguments))
        failed();
}

void open_manual(const std::function<void(const QString&)>& failed) {
    const QString manual = QString::fromLocal8Bit(find_manual(program_folder()));
    if (manual.isEmpty())
        failed({});
    else
        open_with_desktop(manual, [failed, manual] { failed(manual); });
}

} // namespace quillon
