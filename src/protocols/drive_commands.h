// SPDX-License-Identifier: MIT
// What the sources of the driving protocol share: its commands as rows.
#pragma once

#include "protocols/drive.h"
#include "session/line_reader.h"

#include <nlohmann/json.hpp>

#include <span>
#include <string>
#include <string_view>

namespace quillon {

using Json = nlohmann::ordered_json;

/// A command of the protocol that is more than an input. `argument` is the rest of the line after one blank.
struct DriveCommand {
    std::string_view name;
    Refusal (*carry_out)(DriveSession& session, std::string_view argument, Json& answer);
};

/// A command makes at most so many ticks.
constexpr long long DRIVE_TICKS_MAX = 10'000'000;

inline Refusal refuse_argument(std::string_view argument) {
    return argument.empty() ? Refusal() : "This command takes no argument.";
}

/// Notes what a program or a command line's PRINT shows, after a tick; nothing of what is typed.
void follow_shown(DriveSession& session);

/// A new machine with its host, whose session has not begun yet.
void prepare_machine(DriveSession& session);

/// Follows what is shown from a display that has nothing to do with the last one.
void show_afresh(DriveSession& session);

/// The commands that go back in time, stop and keep (drive_travel.cpp).
std::span<const DriveCommand> travel_commands();

} // namespace quillon
