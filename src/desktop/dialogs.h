// SPDX-License-Identifier: MIT
// Dialogs and programs of the system: choosing a listing, the text editor, the manual.
#pragma once

#include "core/messages.h"
#include "shell/editor_call.h"
#include "shell/settings.h"

#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

namespace quillon {

/// What was chosen in the open dialog.
struct ListingChoice {
    QString path;
    int file_type; ///< number of the filter, from 1
};

/// Lets the user choose a listing; nothing when that is cancelled.
std::optional<ListingChoice> choose_listing(QWidget* parent, const MessageCatalogue& catalogue,
                                            const Preferences& preferences);

/// Starts the editor, which goes on by itself. `failed` is called when it cannot be started.
void launch_editor(const EditorCall& call, const std::function<void()>& failed);

/// Opens the manual in the user's browser or reader. `failed` gets its path when there is no such program, or an empty
/// one when there is no manual.
void open_manual(const std::function<void(const QString& path)>& failed);

} // namespace quillon
