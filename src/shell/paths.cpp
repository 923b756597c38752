// SPDX-License-Identifier: MIT
// Taking paths apart.
#include "shell/paths.h"

#include <filesystem>

namespace quillon {
namespace {

std::size_t name_start(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

} // namespace

std::string folder_of(std::string_view path) { return std::string(path.substr(0, name_start(path))); }

std::string_view name_of(std::string_view path) { return path.substr(name_start(path)); }

std::string absolute_path(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path whole;
    for (const fs::path& part : fs::absolute(path, error)) {
        if (part != ".")
            whole /= part;
    }
    return error ? path : whole.string();
}

bool is_regular_file(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace quillon
