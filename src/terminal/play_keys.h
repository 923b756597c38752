// SPDX-License-Identifier: MIT
// Keys of a terminal as keys of the machine. A terminal tells no key-up and no modifiers of most keys: a key counts as
// down until a tick has used it, and a prefix key chooses the level of the next one.
#pragma once

#include "keys/key_tables.h"
#include "shell/key_queue.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

struct Simulator;

/// What was typed: a key that has a name, or a character.
struct TypedKey {
    int virtual_key = 0;     ///< of keys that have one of their own: function keys, Enter, arrows; else 0
    std::string character{}; ///< UTF-8
    bool alt = false;
};

/// The event that a typed key is, at a level chosen before; nothing where the machine has no such key. Letters that
/// are typed as capitals are letters with Shift.
std::optional<KeyEvent> key_event_for(const TypedKey& typed, KeyLevel level, bool ascii_mode);

/// The level that the prefix key leads to: Shift, Ctrl, both, Alt, and none again.
KeyLevel next_level(KeyLevel level);

/// What a level is called.
std::string_view level_name(KeyLevel level);

/// Keys that were typed and have yet to be used.
struct Typist {
    std::deque<KeyEvent> waiting;
    std::optional<KeyEvent> down; ///< the key that counts as down
    int ticks_down = 0;
    bool read = false;       ///< KEY$ has seen it
    std::size_t dropped = 0; ///< keys that came when too many waited
};

/// Takes a key, unless tens of thousands wait.
void type_key(Typist& typist, const KeyEvent& event);

/// All keys come up, and those that wait are forgotten.
void drop_typed_keys(Typist& typist, Simulator& s);

/// One tick of the simulator with the next key down. A key that nothing asks for comes up after a second.
bool tick_with_keys(Typist& typist, Simulator& s);

} // namespace quillon
