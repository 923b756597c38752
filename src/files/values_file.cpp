// SPDX-License-Identifier: MIT
// Reading and writing the saved-values file.
#include "files/values_file.h"

#include "core/machine.h"
#include "files/file_reading.h"
#include "files/safe_write.h"
#include "shell/saved_values.h"

#include <memory>

namespace quillon {

FileContents read_values_file(const std::string& path) { return read_file(path, VALUES_IMAGE_SIZE); }

bool read_values_image(Machine& m, const FileContents& file) {
    const bool understood =
        read_values_image(m, std::span(reinterpret_cast<const std::uint8_t*>(file.bytes.data()), file.bytes.size()));
    return understood && file.status != ReadStatus::TOO_LARGE;
}

bool write_saved_values(const std::string& path, const Machine& m) {
    const FileContents old = read_values_file(path);
    if (old.status == ReadStatus::UNREADABLE)
        return false;
    const ValuesImage image = values_image(m);
    const std::string_view bytes(reinterpret_cast<const char*>(image.data()), image.size());
    const auto scratch = std::make_unique<Machine>();
    return read_values_image(*scratch, old) ? safe_write(path, bytes) : safe_write_keeping_old(path, bytes);
}

} // namespace quillon
