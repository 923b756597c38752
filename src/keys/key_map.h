// SPDX-License-Identifier: MIT
// The PC keyboard: from key messages to the machine's pending key, its EXE, and commands of the host. Keys are named
// by virtual-key codes, plain numbers here; whoever has the keyboard maps its own keys to them.
#pragma once

#include "keys/virtual_keys.h"

namespace quillon {

struct Machine;

/// How many times its size the LCD is drawn at most.
constexpr int ZOOM_MAX = 12;

/// A key goes down (or repeats while it is held): sets the pending key, asks for EXE, or runs what a function key is
/// for. The modifiers count as they were last sampled. Any code will do; one that means nothing leaves no key.
void on_key_down(Machine& m, int virtual_key, bool auto_repeat);

/// A key goes down while Alt is held: the function keywords of machine mode. Nothing in ASCII mode.
void on_sys_key_down(Machine& m, int virtual_key);

/// A character is typed as the user's own keyboard layout has it, in ASCII mode: it becomes the pending key as it is,
/// except that a letter alone is upper case and one with Shift lower case. `held_code` is the code under which the key
/// counts as down.
void on_character(Machine& m, char character, int held_code);

/// Whether a key does its work the moment it goes down, whatever the machine is doing: STOP, single steps, and the keys
/// of the host. EXE is none of these.
bool acts_at_once(int virtual_key);

/// Whether a key is pending that the line editor has yet to see. So it is for a tick where a key begins an entry: it
/// must neither be replaced nor come up before the next one.
bool is_key_unread(const Machine& m);

} // namespace quillon
