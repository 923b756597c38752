// SPDX-License-Identifier: MIT
// The About window.
#pragma once

class QWidget;

namespace quillon {

struct MessageCatalogue;

/// Shows what this program is, and which version, until it is closed.
void show_about_dialog(const MessageCatalogue& catalogue, QWidget* parent);

} // namespace quillon
