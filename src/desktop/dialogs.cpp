// System dialogs and programs.
#include "desktop/dialogs.h"

#include "shell/places.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <algorithm>

namespace quillon {
namespace {

/// The filters of the open dialog, in the order of their numbers. Letters of both cases are matched.
const QStringList& listing_filters() {
    static const QStringList filters{QStringLiteral("All(*.*) (*)"), QStringLiteral("BAS(*.BAS) (*.BAS *.bas)"),
                                     QStringLiteral("TXT(*.TXT) (*.TXT *.txt)")};
    return filters;
}

} // namespace

std::optional<ListingChoice> choose_listing(QWidget* parent, const Settings& settings) {
    const QStringList& filters = listing_filters();
    QString filter = filters[std::clamp(settings.file_type - 1, 0, static_cast<int>(filters.size()) - 1)];
    // Whoever has opened nothing yet finds the examples.
    const std::string start = settings.last_file.empty() ? find_examples(program_folder()) : settings.last_file;
    const QString path = QFileDialog::getOpenFileName(
        parent, QStringLiteral("Open file"), QString::fromLocal8Bit(start), filters.join(QLatin1String(";;")), &filter);
    if (path.isEmpty())
        return std::nullopt;
    return ListingChoice{path, static_cast<int>(filters.indexOf(filter)) + 1};
}

bool launch_editor(const EditorCall& call) {
    QStringList arguments;
    for (const std::string& argument : call.arguments)
        arguments << QString::fromLocal8Bit(argument);
    return QProcess::startDetached(QString::fromLocal8Bit(call.program), arguments);
}

void open_manual() {
    const std::string manual = find_manual(program_folder());
    if (!manual.empty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromLocal8Bit(manual)));
}

} // namespace quillon
