// SPDX-License-Identifier: MIT
// What the machine's host does with files, wherever there is a person: snapshots and the dump of the variables.
#pragma once

#include "files/safe_write.h"

#include <string>

namespace quillon {

struct Canvas;
struct Simulator;

/// Writes a canvas to the first free of the names qzsnap_000.bmp to qzsnap_255.bmp in a folder; `path` is that file.
NewFile take_snapshot(const Canvas& canvas, const std::string& folder, std::string& path);

/// Lets snapshots go to the user's desktop folder, and the dump of the variable table to the first free of the names
/// `debug.bin`, `debug_001.bin` to `debug_255.bin` in the working folder: never to a file that is there. A note says
/// where each went, a message box that it could not be written.
void use_file_services(Simulator& s);

} // namespace quillon
