// SPDX-License-Identifier: MIT
// Keeping markup out.
#include "desktop/plain_text.h"

namespace quillon {

/// Tooltips cannot be told to be plain: what looks like markup becomes markup that shows it.
QString plain_tooltip(const QString& text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()) : text;
}

QLabel* plain_label(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace quillon
