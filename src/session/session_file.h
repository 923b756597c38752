// SPDX-License-Identifier: MIT
// Sessions as text that a person can read: how the machine was at the beginning, then every input with its tick, in the
// words of the driving protocol, and between them what the machine showed, so that a replay elsewhere can tell whether
// it is the same. docs/debugging.md describes the format.
#pragma once

#include "session/log.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// What is compared of a replay: what a person could see and hear. Texts of the catalogue are not among it, nor the
/// last digits of numbers, which the display does not show.
struct Observation {
    std::string display; ///< the twelve columns
    int run_state = 0;
    int tone = 0; ///< half a period in samples while a tone plays, else 0
    int error_code = 0;

    bool operator==(const Observation&) const = default;
};

/// An observation right after a tick, and a checksum of all observations up to it.
struct Sight {
    TickCount tick = 0;
    Observation seen;
    std::uint32_t sum = 0;
};

/// A session as its file has it.
struct SessionFile {
    std::vector<Input> start; ///< SET and CELL, for a machine that is new otherwise
    std::string image;        ///< of the moment it begins with, in place of `start`; empty for none
    std::vector<LogEntry> entries;
    std::vector<Sight> sights;
    TickCount sights_every = 1; ///< of so many changes of what is observed, one is among the sights
    TickCount end = 0;
};

/// A session has at most so many ticks, and a file so many bytes.
constexpr TickCount SESSION_TICKS_MAX = 1'000'000'000;
constexpr std::size_t SESSION_FILE_MAX = std::size_t{64} << 20;

/// What is wrong with a session file.
struct SessionFault {
    int line = 0;     ///< from 1
    std::string text; ///< a sentence
};

/// The text of a session file.
std::string session_text(const SessionFile& file);

/// Reads the text of a session file, any bytes.
std::optional<SessionFile> parse_session(std::string_view text, SessionFault& fault);

} // namespace quillon
