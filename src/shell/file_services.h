// What the machine's host does with files, wherever there is a person: snapshots and the dump of the variables.
#pragma once

namespace quillon {

struct Simulator;

/// Lets snapshots go to the user's desktop folder, and the dump of the variable table to `debug.bin` in the working
/// folder. A note says where each went, a message box that it could not be written.
void use_file_services(Simulator& s);

} // namespace quillon
