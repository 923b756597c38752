// SPDX-License-Identifier: MIT
// The program's own pictures as the toolkit has them.
#pragma once

#include <QImage>

namespace quillon {

/// A built-in picture by its number (display/resources.h); a null image for an unknown one. The colour behind index 0
/// is left out when `see_through`.
QImage load_picture(int resource, bool see_through = false);

} // namespace quillon
