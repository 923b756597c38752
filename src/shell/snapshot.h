// Snapshots: the LCD's canvas as a bitmap file.
#pragma once

#include "display/image.h"

#include <string>
#include <vector>

namespace quillon {

/// A canvas as an uncompressed bitmap file of 24 bits per pixel.
std::vector<std::uint8_t> snapshot_bitmap(const Canvas& canvas);

/// Writes a canvas to a file; false when that cannot be, and then no half file is left.
bool write_snapshot(const Canvas& canvas, const std::string& path);

} // namespace quillon
