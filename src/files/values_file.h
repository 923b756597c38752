// SPDX-License-Identifier: MIT
// The file of the saved values, `QZ740.val`. What its bytes mean is the business of `shell/saved_values`.
#pragma once

#include "shell/disk.h"

#include <string>

namespace quillon {

struct Machine;

/// The saved-values file.
FileContents read_values_file(const std::string& path);

/// Fills the variable memory from the file's bytes, as `read_values_image` does of bytes; one that is too long, or
/// cannot be read, is never understood whole.
bool read_values_image(Machine& m, const FileContents& file);

/// Writes the saved-values file whole; false when it fails, and when the old file cannot be read: then that is still
/// there. One that is not understood stays beside the new one under a name that ends in ".bad".
bool write_saved_values(const std::string& path, const Machine& m);

} // namespace quillon
