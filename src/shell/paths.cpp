// SPDX-License-Identifier: MIT
// Taking paths apart.
#include "shell/paths.h"

namespace quillon {
namespace {

std::size_t name_start(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

} // namespace

std::string folder_of(std::string_view path) { return std::string(path.substr(0, name_start(path))); }

std::string_view name_of(std::string_view path) { return path.substr(name_start(path)); }

} // namespace quillon
