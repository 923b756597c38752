// SPDX-License-Identifier: MIT
// The gate's side towards the host: what the machine asks for passes it, what it is answered is remembered.
#pragma once

#include "session/input.h"
#include "shell/disk.h"

namespace quillon {

struct Session;

/// Puts the gate between the simulator and its host, window and disk, which are kept in the session.
void close_gate(Session& session);

/// What was read of a file as an answer, and back.
Input file_answer(const FileContents& file);
FileContents file_of_answer(const Input& answer);

} // namespace quillon
