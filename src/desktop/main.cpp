// quillon: the simulator in a window.
#include "desktop/lcd_accessibility.h"
#include "desktop/main_window.h"
#include "desktop/quit_signals.h"
#include "desktop/style.h"
#include "shell/catalogue.h"
#include "shell/startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

int main(int argc, char** argv) {
    using namespace quillon;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quillon"));
    QApplication::setApplicationVersion(QStringLiteral(QUILLON_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quillon"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/quillon.svg")));
    QApplication::setStyle(new MachineStyle);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Simulates a pocket computer that runs BASIC listings"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("listing"), QStringLiteral("A listing to load"),
                                 QStringLiteral("[listing]"));
    parser.process(application);

    const Environment environment = read_environment();
    const std::string program = program_folder();
    const auto simulator = std::make_unique<Simulator>();
    simulator->files = find_data_files(environment, program);
    simulator->machine.catalogue =
        read_catalogue(find_catalogue(environment, find_resources(program))).value_or(MessageCatalogue{});
    QApplication::setQuitOnLastWindowClosed(false);
    install_lcd_accessibility();
    MainWindow window(*simulator);
    watch_quit_signals(&window, [&window] { window.end(); });
    window.start(parser.positionalArguments().value(0));
    return QApplication::exec();
}
