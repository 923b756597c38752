// SPDX-License-Identifier: MIT
// Building menus and toolbar.
#include "desktop/menus.h"

#include "desktop/catalogue_text.h"
#include "desktop/commands_table.h"
#include "desktop/plain_text.h"
#include "shell/commands.h"

#include <QIcon>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace quillon {
namespace {

QIcon icon_of(const HostCommandRow& row) {
    return row.icon.empty() ? QIcon()
                            : QIcon(QStringLiteral(":/icons/%1.svg")
                                        .arg(QLatin1String(row.icon.data(), static_cast<qsizetype>(row.icon.size()))));
}

/// The catalogue's text, or the built-in one where it has none.
QString label(const MessageCatalogue& catalogue, const WindowText& text) {
    return catalogue_text(catalogue, text.section, text.number, text.built_in);
}

QAction* add_command(QWidget& menu, const HostCommandRow& row, const QString& text, const CommandHandler& handler) {
    auto* action = new QAction(icon_of(row), text, &menu);
    const int number = row.number;
    QObject::connect(action, &QAction::triggered, [handler, number] { handler(number); });
    menu.addAction(action);
    return action;
}

void add_commands(QMenu& menu, const MessageCatalogue& catalogue, std::span<const HostCommand> commands,
                  const CommandHandler& handler) {
    for (const HostCommand command : commands) {
        const HostCommandRow& row = *find_host_command(command);
        add_command(menu, row, label(catalogue, row.menu), handler);
    }
}

void add_entry(QMenu& menu, const MessageCatalogue& catalogue, const MenuEntry& entry, const CommandHandler& handler) {
    if (!entry.commands.empty())
        return add_commands(*menu.addMenu(label(catalogue, entry.submenu)), catalogue, entry.commands, handler);
    if (const HostCommandRow* row = find_host_command(entry.command))
        add_command(menu, *row, label(catalogue, row->menu), handler);
    else
        menu.addSeparator();
}

/// The menu that a toolbar button drops down.
QMenu* drop_down_menu(QToolButton& button, const MessageCatalogue& catalogue, int command,
                      const CommandHandler& handler, const std::function<void(QMenu&)>& fill_recent) {
    auto* menu = new QMenu(&button);
    if (command == COMMAND_OPEN)
        QObject::connect(menu, &QMenu::aboutToShow, [menu, fill_recent] { fill_recent(*menu); });
    else
        add_commands(*menu, catalogue, page_commands(), handler);
    return menu;
}

} // namespace

QString command_name(const MessageCatalogue& catalogue, int command) {
    const WindowText& text = find_host_command(command)->tooltip;
    const QString name = catalogue_text(catalogue, text.section, text.number).section(QLatin1Char(':'), 0, 0);
    return name.isEmpty() ? QString::fromUtf8(text.built_in) : name;
}

void build_menu_bar(QMainWindow& window, const MessageCatalogue& catalogue, const CommandHandler& handler) {
    for (const MenuLayout& layout : menu_table()) {
        QMenu* menu = window.menuBar()->addMenu(label(catalogue, layout.text));
        for (const MenuEntry& entry : layout.entries)
            add_entry(*menu, catalogue, entry, handler);
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
        const HostCommandRow* row = find_host_command(entry.command);
        if (row == nullptr) {
            toolbar->addSeparator();
            continue;
        }
        QAction* action = add_command(*toolbar, *row, command_name(catalogue, entry.command), handler);
        action->setToolTip(plain_tooltip(catalogue_text(catalogue, row->tooltip.section, row->tooltip.number)));
        action->setCheckable(row->is_on != nullptr);
        if (row->is_on != nullptr)
            checks[row->number] = action;
        auto* button = qobject_cast<QToolButton*>(toolbar->widgetForAction(action));
        button->setFocusPolicy(Qt::TabFocus);
        if (entry.drop_down && button != nullptr) {
            button->setMenu(drop_down_menu(*button, catalogue, entry.command, handler, fill_recent));
            button->setPopupMode(QToolButton::MenuButtonPopup);
        }
    }
    window.addToolBar(toolbar);
    return checks;
}

} // namespace quillon
