// SPDX-License-Identifier: MIT
// Snapshots: the LCD's canvas as a bitmap file.
#pragma once

#include "display/image.h"
#include "shell/safe_write.h"

#include <string>

namespace quillon {

/// A canvas as an uncompressed bitmap file of 24 bits per pixel.
std::string snapshot_bitmap(const Canvas& canvas);

/// Writes a canvas to a file; false when that cannot be, and then no half file is left.
bool write_snapshot(const Canvas& canvas, const std::string& path);

/// Writes a canvas to the first free of the names qzsnap_000.bmp to qzsnap_255.bmp in a folder; `path` is that file.
NewFile take_snapshot(const Canvas& canvas, const std::string& folder, std::string& path);

} // namespace quillon
