// SPDX-License-Identifier: MIT
// How a simulator reads files while it runs: listings and skins. All its reading goes through here, so that what was
// read can be remembered, and given again when a session is gone through once more.
#pragma once

#include "shell/files.h"

#include <functional>

namespace quillon {

struct Disk {
    std::function<FileContents(const std::string& path, std::size_t limit, FileKind kind)> read = read_file;
};

} // namespace quillon
