// SPDX-License-Identifier: MIT
// Driving a machine from a script: one command a line, one line of JSON for each. No window and no clock; time passes
// only by commands, so the same commands give the same answers. docs/drive.md describes the protocol.
#pragma once

#include "protocols/shown_lines.h"
#include "session/travel.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Texts since the last `state`, oldest first. Those that no longer fit are counted.
struct DriveLog {
    std::vector<std::string> texts;
    std::size_t bytes = 0;
    std::uint64_t dropped = 0;
};

/// A driven machine and what it asked of its host.
struct DriveSession {
    /// A new machine, whose listings, skins, catalogues and snapshots are files on this disk.
    explicit DriveSession(Disk disk = {});

    Disk disk; ///< of this machine and of those that `new` makes
    std::unique_ptr<Simulator> simulator;
    std::unique_ptr<Session> session;
    Debugger debugger;      ///< breakpoints and watchpoints
    DriveLog host;          ///< what the machine asked of its host
    DriveLog shown;         ///< what programs have shown whole
    ShownLines shown_line;  ///< the line being shown
    std::string shown_part; ///< the beginning of the next text of `shown`
    std::string clipboard;  ///< its own, machine text
    bool finished = false;  ///< after `quit`
};

/// A line of more bytes than this is refused.
constexpr std::size_t DRIVE_LINE_MAX = std::size_t{1} << 16;

/// Carries out one line (without its line feed) and returns the answer, one line of JSON without a line feed; nothing
/// for an empty line or a comment. Any bytes will do: what is no command is refused and changes nothing.
std::optional<std::string> drive_line(DriveSession& session, std::string_view line);

} // namespace quillon
