// SPDX-License-Identifier: MIT
// What the machine asks of its host: the only way out of it. The desktop fills these in from its toolkit, the terminal
// from the terminal, tests and the driving protocol from a recorder.
#pragma once

#include "core/host_commands.h"
#include "core/text.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

/// The kinds of message box.
enum class MessageIcon {
    WARNING, ///< a text of the catalogue
    STOP,    ///< a fault of a listing or a picture
};

/// One callback for each service, every one with a harmless default. All are called on the thread that ticks the
/// machine. None may tick the machine or change its record, except where that is said; none may block.
struct Host {
    /// Loops this RIFF/WAVE image until told otherwise, in place of the tone that plays. The image is the machine's
    /// and stays as it is until the next `play_tone` or `stop_tone`. Called by BEEP and BEEPS.
    std::function<void(std::span<const std::uint8_t> wave_image)> play_tone = [](std::span<const std::uint8_t>) {};

    /// Ends the tone that plays, if any. Called when a tone's time is up.
    std::function<void()> stop_tone = [] {};

    /// Shows a text (UTF-8) with the caption "Error."; returns at once, the box itself comes after the tick.
    std::function<void(const std::string& text, MessageIcon icon)> show_message = [](const std::string&, MessageIcon) {
    };

    /// Refreshes the fields of the trace window, where one is open. Called after each traced step.
    std::function<void()> refresh_trace = [] {};

    /// Empties the fields of the trace window, where one is open. Called by VAC.
    std::function<void()> reset_trace = [] {};

    /// Runs a host command by its number (40001-40049). Commands that are the machine's own business (RUN, STOP, trace,
    /// command line) change the record before this returns; windows follow after the tick.
    std::function<void(int command)> run_command = [](int) {};

    /// Whether the key with this virtual-key code is down now. Called at the end of each tick that holds a key.
    std::function<bool(int virtual_key)> is_key_down = [](int) { return false; };

    /// KEY$ has read the pending key. A host that feeds keys from a text goes on to the next one; others need not know.
    std::function<void()> key_read = [] {};

    /// Gives the window the size of the record's `zoom`. Called by the zoom keys and commands.
    std::function<void()> resize_window = [] {};

    /// Writes the picture of the display to a new file. Called by the snapshot key.
    std::function<void()> take_snapshot = [] {};

    /// Writes the variable table to a file. Called by the dump key.
    std::function<void()> write_dump = [] {};

    /// Puts a text (machine characters) on the clipboard. Called when a result or an entry is copied.
    std::function<void(std::string_view text)> copy_text = [](std::string_view) {};

    /// The first characters of the text on the clipboard, empty when there is none. Called when an entry is pasted
    /// into.
    std::function<BoundedText<15>()> paste_text = [] { return BoundedText<15>(); };

    /// Loads the skin with this file name (machine characters), an empty one for the default; false when there is no
    /// skin at all afterwards. Called by GLOAD.
    std::function<bool(std::string_view name)> load_skin = [](std::string_view) { return true; };

    /// Milliseconds since the program started. Called when a listing is loaded, to seed the random generator.
    std::function<std::uint32_t()> milliseconds = [] { return 0U; };
};

} // namespace quillon
