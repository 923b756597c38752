// SPDX-License-Identifier: MIT
// The soft keyboard for screen readers: a group of buttons, each with the name of what it is on the layer that shows.
// Pressing one is a click on it.
#pragma once

class QWidget;

namespace quillon {

/// Makes the toolkit describe soft keyboards this way. Once, before the first one is shown.
void install_soft_keyboard_accessibility();

/// Tells those who listen that the keys of this keyboard are others now.
void announce_soft_keys(QWidget* keyboard);

} // namespace quillon
