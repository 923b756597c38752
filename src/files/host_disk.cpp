// SPDX-License-Identifier: MIT
// What the simulator asks of the disk, answered by the host's file system.
#include "files/host_disk.h"

#include "files/catalogue_file.h"
#include "files/file_reading.h"
#include "files/places.h"
#include "files/safe_write.h"

#include <filesystem>

namespace quillon {

namespace fs = std::filesystem;

std::string absolute_path(const std::string& path) {
    std::error_code error;
    fs::path whole;
    for (const fs::path& part : fs::absolute(path, error)) {
        if (part != ".")
            whole /= part;
    }
    return error ? path : whole.string();
}

Disk host_disk() {
    return {
        .read_file = read_file,
        .write_file = safe_write,
        .absolute_path = absolute_path,
        .is_regular_file =
            [](const std::string& path) {
                std::error_code error;
                return fs::is_regular_file(path, error);
            },
        .home_folder = [] { return read_environment().home; },
        .read_catalogue = read_catalogue,
        .installed_catalogue =
            [](std::string_view language) { return installed_catalogue(find_resources(program_folder()), language); }};
}

} // namespace quillon
