// SPDX-License-Identifier: MIT
// Saving the session, and saving and restoring the state of the machine, each with a dialog that asks for the file.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace quillon {

struct Session;

/// Shows what went wrong.
using TextShower = std::function<void(const QString& text)>;

void save_session(QWidget& parent, const Session& session, const TextShower& show);
void save_state_file(QWidget& parent, Session& session, const TextShower& show);

/// A state of another version, and a damaged one, change nothing.
void restore_state_file(QWidget& parent, Session& session, const TextShower& show);

} // namespace quillon
