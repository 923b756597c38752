// SPDX-License-Identifier: MIT
// What keys are to the machine, for those who pace them. How a host hands keys in is in core/controls.h; keys are named
// by virtual-key codes, plain numbers there, and whoever has the keyboard maps its own keys to them.
#pragma once

#include "keys/virtual_keys.h"

namespace quillon {

struct Machine;

/// Whether a key does its work the moment it goes down, whatever the machine is doing: STOP, single steps, and the keys
/// of the host. EXE is none of these.
bool acts_at_once(int virtual_key);

/// Whether a key is pending that the line editor has yet to see. So it is for a tick where a key begins an entry: it
/// must neither be replaced nor come up before the next one.
bool is_key_unread(const Machine& m);

} // namespace quillon
