// SPDX-License-Identifier: MIT
// The window with the long explanation of the last error.
#pragma once

class QWidget;

namespace quillon {

struct Machine;

/// Shows `error_detail` as it is now, until it is closed.
void show_error_detail(const Machine& m, QWidget* parent);

} // namespace quillon
