// SPDX-License-Identifier: MIT
// quillon: the simulator in a window.
#include "desktop/arguments.h"
#include "desktop/lcd_accessibility.h"
#include "desktop/main_window.h"
#include "desktop/quit_signals.h"
#include "desktop/soft_keyboard_accessibility.h"
#include "desktop/style.h"
#include "files/catalogue_file.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace {

/// The toolkit's own end without a display would be an abort, and advice that does not help.
void end_without_display(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
        return;
    }
    std::fputs("quillon: no window can be opened: there is no display, or it does not answer.\n"
               "quillon-cli play is the same machine in a terminal.\n",
               stderr);
    std::_Exit(quillon::BAD_CALL);
}

void describe_program() {
    QApplication::setApplicationName(QStringLiteral("quillon"));
    QApplication::setApplicationVersion(QStringLiteral(QUILLON_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quillon"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/quillon.svg")));
    QApplication::setQuitOnLastWindowClosed(false);
}

/// The texts of the toolkit's own dialogs and buttons; without them they are English.
void use_toolkit_language(const quillon::Environment& environment) {
    const std::string_view language = quillon::user_language(environment);
    auto* texts = new QTranslator(qApp);
    const QString name = QLatin1String("qtbase_") + QLatin1String(language.data(), static_cast<int>(language.size()));
    if (texts->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(texts);
}

} // namespace

int main(int argc, char** argv) {
    using namespace quillon;
    Arguments arguments;
    if (const auto status = read_arguments(argc, argv, arguments))
        return *status;
    qInstallMessageHandler(end_without_display);
    QApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    describe_program();
    QApplication::setStyle(new MachineStyle);

    const Environment environment = read_environment();
    use_toolkit_language(environment);
    const std::string program = program_folder();
    const auto simulator = std::make_unique<Simulator>();
    StateFiles files;
    files.paths = find_data_files(environment, program);
    simulator->around.catalogue =
        read_catalogue(find_catalogue(environment, find_resources(program))).value_or(MessageCatalogue{});
    install_lcd_accessibility();
    install_soft_keyboard_accessibility();
    Session session(*simulator);
    MainWindow window(session, files);
    watch_quit_signals(&window, [&window] { window.end(); });
    window.start(arguments.listing);
    return QApplication::exec();
}
