// SPDX-License-Identifier: MIT
// The host's file system as the simulator's disk.
#pragma once

#include "shell/disk.h"

namespace quillon {

/// A disk whose files are those of the host.
Disk host_disk();

/// The path from the root on, of one that starts in the working folder. Links and ".." stay as they are.
std::string absolute_path(const std::string& path);

} // namespace quillon
