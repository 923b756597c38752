// The About window.
#pragma once

class QWidget;

namespace quillon {

/// Shows what this program is, and which version, until it is closed.
void show_about_dialog(QWidget* parent);

} // namespace quillon
