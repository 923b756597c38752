// SPDX-License-Identifier: MIT
// The keys of a PC keyboard by where they lie, whatever is printed on them: the virtual keys of a Japanese keyboard's
// places. For hosts that learn the place of a key: a desktop as a scan code, a browser as a name.
#pragma once

#include "keys/virtual_keys.h"

#include <optional>
#include <string_view>

namespace quillon {

/// The virtual key at a place that is named as a browser names it (KeyboardEvent.code: "KeyQ", "IntlYen", "Numpad7");
/// VK_NONE for a place that means nothing to the machine. The keypad's names do not tell Num Lock: without it the key's
/// own name ("Home") is to be asked first.
int virtual_key_at_place(std::string_view name);

/// The virtual key at a place of the keyboard's main block that has this scan code, as Linux counts them (evdev; X11
/// and Wayland add 8). VK_NONE where the place types nothing, nothing for a place outside of the block: its keys have
/// names that every system tells.
std::optional<int> virtual_key_of_scan_code(int scan_code);

} // namespace quillon
