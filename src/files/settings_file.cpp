// SPDX-License-Identifier: MIT
// Writing the settings file.
#include "files/settings_file.h"

#include "files/file_reading.h"
#include "files/safe_write.h"
#include "shell/settings.h"

namespace quillon {

bool write_settings(const std::string& path, const StoredSettings& settings) {
    const std::string text = settings_text(settings);
    const FileContents old = read_file(path, SETTINGS_FILE_MAX);
    if (old.status == ReadStatus::UNREADABLE || text.size() > SETTINGS_FILE_MAX)
        return false;
    const bool is_understood = old.status != ReadStatus::TOO_LARGE && holds_settings(old.bytes);
    return is_understood ? safe_write(path, text) : safe_write_keeping_old(path, text);
}

} // namespace quillon
