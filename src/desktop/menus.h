// SPDX-License-Identifier: MIT
// Menu bar and toolbar, built from their layout (commands_table) and the commands' rows, with the catalogue's labels
// where it has them.
#pragma once

#include "core/messages.h"

#include <QMainWindow>
#include <QMenu>

#include <functional>
#include <map>

namespace quillon {

/// What a chosen entry does: the number of its command.
using CommandHandler = std::function<void(int command)>;

/// The actions that show a check mark, by the number of their command.
using CommandActions = std::map<int, QAction*>;

/// What the button of a command is called: its tooltip up to a colon.
QString command_name(const MessageCatalogue& catalogue, int command);

/// Builds the menu bar of `window`; every entry hands its command to `handler`.
void build_menu_bar(QMainWindow& window, const MessageCatalogue& catalogue, const CommandHandler& handler);

/// Builds the toolbar and returns the actions of its check buttons. `fill_recent` fills the menu of the Open button
/// each time it drops down.
CommandActions build_toolbar(QMainWindow& window, const MessageCatalogue& catalogue, const CommandHandler& handler,
                             const std::function<void(QMenu&)>& fill_recent);

} // namespace quillon
