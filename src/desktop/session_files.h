// SPDX-License-Identifier: MIT
// The entries of the File menu that save the session, and save and restore the state of the machine: in ten slots
// beside the settings, or in a file that a dialog asks for.
#pragma once

#include <QString>

#include <functional>
#include <string>

class QAction;
class QMenu;
class QWidget;

namespace quillon {

struct Session;

/// Shows what went wrong.
using TextShower = std::function<void(const QString& text)>;

constexpr int STATE_SLOTS = 10;

/// Adds the entries to a menu. The slots are files in `folder`, which is made when it is missing. A state of another
/// version, and a damaged one, are refused and change nothing.
void add_session_entries(QMenu& menu, QAction* before, Session& session, const std::string& folder,
                         const TextShower& show);

} // namespace quillon
