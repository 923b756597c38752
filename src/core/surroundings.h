// SPDX-License-Identifier: MIT
// What a machine stands on and does not change: its host, its language, the message catalogue. Made once by whoever
// makes the machine; copies of the machine share it.
#pragma once

#include "core/host.h"
#include "core/language.h"
#include "core/messages.h"

namespace quillon {

struct Surroundings {
    const Language* language = nullptr;
    Host host;
    MessageCatalogue catalogue;
};

/// Harmless surroundings: no words, no texts, a host that does nothing.
const Surroundings& no_surroundings();

/// Refers to a machine's surroundings. All compare equal: they are no part of the machine's value.
struct SurroundingsReference {
    const Surroundings* pointer = &no_surroundings();

    const Surroundings* operator->() const { return pointer; }
    bool operator==(const SurroundingsReference&) const { return true; }
};

} // namespace quillon
