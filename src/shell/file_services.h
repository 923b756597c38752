// What the machine's host does with files, wherever there is a person: snapshots and the dump of the variables.
#pragma once

namespace quillon {

struct Simulator;

/// Lets snapshots go to the user's desktop folder (a message box tells when all numbers are taken), and the dump of the
/// variable table to `debug.bin` in the working folder. Failures to write are silent.
void use_file_services(Simulator& s);

} // namespace quillon
