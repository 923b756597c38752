// SPDX-License-Identifier: MIT
// The LCD for screen readers: a text element with the visible characters on its first line and the lit indicators on
// its second. Changes of the text are announced, blinking is not.
#pragma once

#include <QString>

class QWidget;

namespace quillon {

/// Makes the toolkit describe LCD widgets this way. Once, before the first one is shown.
void install_lcd_accessibility();

/// Tells those who listen that the text of this LCD has changed.
void announce_lcd_text(QWidget* lcd, const QString& before, const QString& now);

} // namespace quillon
