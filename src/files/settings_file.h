// SPDX-License-Identifier: MIT
// The file of the settings, `QZ740.ini`. What its text means is the business of `shell/settings`.
#pragma once

#include <cstddef>
#include <string>

namespace quillon {

struct StoredSettings;

/// A settings file of more bytes than this is not read, nor written.
constexpr std::size_t SETTINGS_FILE_MAX = std::size_t{1} << 20;

/// Writes the settings file whole; false when it fails, when the old file cannot be read, and when the new one would be
/// too large to be read again: then the old file is still there. One that holds no settings stays beside the new one
/// under a name that ends in ".bad".
bool write_settings(const std::string& path, const StoredSettings& settings);

} // namespace quillon
