// SPDX-License-Identifier: MIT
// A moment of a simulator as a value: the machine's record, and what is known beside it. Taking one is a copy, going
// back puts one in place.
#pragma once

#include "core/machine.h"
#include "display/image.h"
#include "shell/key_queue.h"

#include <memory>
#include <string>

namespace quillon {

struct Simulator;

/// A skin as it was put in place; shared by all moments that show it.
struct SkinInPlace {
    std::string name; ///< empty for the default
    Canvas picture;   ///< in true colours
};

struct Moment {
    Machine machine;
    KeyQueue keys;       ///< events that wait, and the keys that are down
    Modifiers modifiers; ///< the modifier keys that are down
    bool exe_held = false;
    std::shared_ptr<const SkinInPlace> skin;
    bool tone_plays = false;
    std::string listing_path;      ///< of the listing that a reload reads; no part of the value
    bool listing_was_read = false; ///< likewise: the title names it
};

/// Whether two moments are the same: the record (numbers by their bits), keys, modifiers, tone, and the skin's name.
bool operator==(const Moment& a, const Moment& b);

/// The moment that a simulator is in. `known` is the skin of the moment before, which is shared when it is still there.
Moment take_moment(const Simulator& s, bool tone_plays, const std::shared_ptr<const SkinInPlace>& known);

/// Puts a moment in place, its skin included, and draws the LCD. What the machine stands on (host, language, catalogue)
/// stays the simulator's.
void restore_moment(Simulator& s, const Moment& moment);

} // namespace quillon
