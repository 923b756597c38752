// SPDX-License-Identifier: MIT
// What the simulator asks of the window around it. A window fills these in; without one each does nothing.
#pragma once

#include "core/host.h"

#include <functional>
#include <string>

namespace quillon {

/// Called on the thread that ticks. None may tick the machine.
struct Window {
    /// Carries out a command that only a window can: dialogs, auxiliary windows, resizing, the editor, leaving.
    std::function<void(HostCommand)> perform = [](HostCommand) {};

    /// The trace window is to be opened or closed, as the record's `trace_mode` says.
    std::function<void()> toggle_trace = [] {};

    /// The soft keyboard is to be shown or hidden, as the record's `soft_open` says.
    std::function<void()> toggle_soft_keyboard = [] {};

    /// What checks, title or tick interval are made of has changed: the record's modes, the listing's name.
    std::function<void()> refresh = [] {};

    /// Something that shows nowhere else has been done: a short text that passes by itself.
    std::function<void(const std::string& text)> note = [](const std::string&) {};
};

} // namespace quillon
