// SPDX-License-Identifier: MIT
// Texts that come from files are shown as they are, whatever markup they look like.
#pragma once

#include <QLabel>
#include <QString>

namespace quillon {

/// A text as a tooltip that shows it letter by letter.
QString plain_tooltip(const QString& text);

/// A label that shows a text letter by letter.
QLabel* plain_label(const QString& text);

} // namespace quillon
