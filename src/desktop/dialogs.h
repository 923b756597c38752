// Dialogs and programs of the system: choosing a listing, the text editor, the manual.
#pragma once

#include "shell/commands.h"
#include "shell/settings.h"

#include <QString>
#include <QWidget>

#include <optional>

namespace quillon {

/// What was chosen in the open dialog.
struct ListingChoice {
    QString path;
    int file_type; ///< number of the filter, from 1
};

/// Lets the user choose a listing; nothing when that is cancelled.
std::optional<ListingChoice> choose_listing(QWidget* parent, const Settings& settings);

/// Starts the editor, which goes on by itself; false when it cannot be started.
bool launch_editor(const EditorCall& call);

/// Opens the manual in the user's browser or reader.
void open_manual();

} // namespace quillon
