// SPDX-License-Identifier: MIT
// Snapshots: the LCD's canvas as the bytes of a bitmap file.
#pragma once

#include "display/image.h"

#include <string>

namespace quillon {

/// A canvas as an uncompressed bitmap file of 24 bits per pixel.
std::string snapshot_bitmap(const Canvas& canvas);

} // namespace quillon
