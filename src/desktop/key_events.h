// From the toolkit's key events to the simulator's.
#pragma once

#include "shell/key_queue.h"

#include <QKeyEvent>

#include <optional>

namespace quillon {

/// The event as the key queue takes it; nothing for keys that mean nothing to the machine. In ASCII mode a key that
/// types a character is handed over as that character, whatever the keyboard's layout; otherwise keys are named by
/// where they lie (by scan code), or by their symbol where the system does not tell that.
std::optional<KeyEvent> key_event_from(const QKeyEvent& event, bool ascii_mode);

} // namespace quillon
