// SPDX-License-Identifier: MIT
// The tool's output: the source file with the compressed pictures, and bitmap files to look at.
#pragma once

#include "display/image.h"

#include <span>
#include <string>

namespace quillon {

struct Resource {
    int id;
    const char* name; ///< of the bitmap file, without its extension
    IndexedImage image;
};

/// Writes the C++ file that defines `image_resource`. False when it cannot be written.
bool write_source(const std::string& path, std::span<const Resource> resources);

/// Writes each picture as a bitmap file into a folder that exists. False when one cannot be written.
bool write_bitmap_files(const std::string& folder, std::span<const Resource> resources);

} // namespace quillon
