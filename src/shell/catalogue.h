// SPDX-License-Identifier: MIT
// Message catalogue files.
#pragma once

#include "core/messages.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Reads a catalogue: sections of keys "M_000". Values keep their first 259 bytes; "@" is a line break. The text is
/// UTF-8 when it is valid UTF-8, else Shift-JIS. Any bytes will do: what is no catalogue yields no texts.
MessageCatalogue parse_catalogue(std::string_view text);

/// Reads a catalogue file of up to 1 MiB; nothing when it cannot be read.
std::optional<MessageCatalogue> read_catalogue(const std::string& path);

} // namespace quillon
