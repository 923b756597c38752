// SPDX-License-Identifier: MIT
// Building menus and toolbar.
#include "desktop/menus.h"

#include "desktop/catalogue_text.h"
#include "desktop/commands_table.h"
#include "desktop/plain_text.h"

#include <QIcon>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace quillon {
namespace {

constexpr const char* MENU_SECTION = "MENU";
constexpr const char* TOOLTIP_SECTION = "TOOLTIP";
constexpr int ENTRIES_PER_MENU = 10; ///< the catalogue numbers the entries of menu i from 10 * i + 10 on

QIcon icon_of(const CommandText& command) {
    return command.icon == nullptr ? QIcon() : QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(command.icon)));
}

/// The catalogue's label, or the built-in one where it has none.
QString label(const MessageCatalogue& catalogue, int number, const char* built_in) {
    return catalogue_text(catalogue, MENU_SECTION, number, built_in);
}

QString tooltip(const MessageCatalogue& catalogue, const ToolbarEntry& entry) {
    return catalogue_text(catalogue, TOOLTIP_SECTION, entry.tooltip);
}

QAction* add_command(QWidget& menu, const CommandText& command, const QString& text, const CommandHandler& handler) {
    auto* action = new QAction(icon_of(command), text, &menu);
    const int number = command.command;
    QObject::connect(action, &QAction::triggered, [handler, number] { handler(number); });
    menu.addAction(action);
    return action;
}

std::span<const CommandText> submenu_commands(MenuEntry::Kind kind) {
    switch (kind) {
    case MenuEntry::Kind::PAGES: return page_commands();
    case MenuEntry::Kind::ANGLES: return angle_commands();
    case MenuEntry::Kind::ZOOMS: return zoom_commands();
    default: return {};
    }
}

void add_commands(QMenu& menu, std::span<const CommandText> commands, const CommandHandler& handler) {
    for (const CommandText& command : commands)
        add_command(menu, command, QString::fromUtf8(command.text), handler);
}

void add_entry(QMenu& menu, const MenuEntry& entry, const QString& text, const CommandHandler& handler) {
    if (entry.kind == MenuEntry::Kind::SEPARATOR)
        menu.addSeparator();
    else if (entry.kind == MenuEntry::Kind::COMMAND)
        add_command(menu, entry.command, text, handler);
    else
        add_commands(*menu.addMenu(text), submenu_commands(entry.kind), handler);
}

/// The menu that a toolbar button drops down.
QMenu* drop_down_menu(QToolButton& button, int command, const CommandHandler& handler,
                      const std::function<void(QMenu&)>& fill_recent) {
    auto* menu = new QMenu(&button);
    if (command == COMMAND_OPEN)
        QObject::connect(menu, &QMenu::aboutToShow, [menu, fill_recent] { fill_recent(*menu); });
    else
        add_commands(*menu, page_commands(), handler);
    return menu;
}

} // namespace

/// The tooltip up to its colon.
QString command_name(const MessageCatalogue& catalogue, int command) {
    for (const ToolbarEntry& entry : toolbar_table()) {
        const QString name = tooltip(catalogue, entry).section(QLatin1Char(':'), 0, 0);
        if (entry.command.command == command)
            return name.isEmpty() ? QString::fromUtf8(entry.command.text) : name;
    }
    return {};
}

void build_menu_bar(QMainWindow& window, const MessageCatalogue& catalogue, const CommandHandler& handler) {
    int number = 0;
    for (const MenuText& text : menu_table()) {
        QMenu* menu = window.menuBar()->addMenu(label(catalogue, number, text.text));
        int entry_number = ENTRIES_PER_MENU * number + ENTRIES_PER_MENU;
        for (const MenuEntry& entry : text.entries)
            add_entry(*menu, entry, label(catalogue, entry_number++, entry.command.text), handler);
        ++number;
    }
}

CommandActions build_toolbar(QMainWindow& window, const MessageCatalogue& catalogue, const CommandHandler& handler,
                             const std::function<void(QMenu&)>& fill_recent) {
    constexpr int ICON_SIZE = 16;
    auto* toolbar = new QToolBar(&window);
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    toolbar->setIconSize({ICON_SIZE, ICON_SIZE});
    CommandActions checks;
    for (const ToolbarEntry& entry : toolbar_table()) {
        if (entry.command.command == 0) {
            toolbar->addSeparator();
            continue;
        }
        const QString name = command_name(catalogue, entry.command.command);
        QAction* action = add_command(*toolbar, entry.command, name, handler);
        action->setToolTip(plain_tooltip(tooltip(catalogue, entry)));
        action->setCheckable(entry.command.checkable);
        if (entry.command.checkable)
            checks[entry.command.command] = action;
        auto* button = qobject_cast<QToolButton*>(toolbar->widgetForAction(action));
        button->setFocusPolicy(Qt::TabFocus);
        if (entry.drop_down && button != nullptr) {
            button->setMenu(drop_down_menu(*button, entry.command.command, handler, fill_recent));
            button->setPopupMode(QToolButton::MenuButtonPopup);
        }
    }
    window.addToolBar(toolbar);
    return checks;
}

} // namespace quillon
