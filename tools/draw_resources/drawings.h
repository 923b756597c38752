// SPDX-License-Identifier: MIT
// The three pictures of the program, each drawn from its tables.
#pragma once

#include "display/image.h"

namespace quillon {

/// The default skin, 512 x 480: glyph cells, indicators and the LCD's panel at their sprites' places.
IndexedImage draw_skin();

/// The soft keyboard, 448 x 240: six layers of 224 x 80, layers 0 to 2 down the left half, 3 to 5 down the
/// right.
IndexedImage draw_soft_keyboard();

/// The pocket computer, 90 x 42, seen from above; index 0 lies around its rounded corners.
IndexedImage draw_pocket_computer();

} // namespace quillon
