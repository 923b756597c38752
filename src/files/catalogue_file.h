// SPDX-License-Identifier: MIT
// Message catalogue files, in UTF-8 as those that come with the program are, or in Shift-JIS as a user's own may be.
#pragma once

#include "core/messages.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Reads the bytes of a catalogue file: UTF-8 when all of them are valid UTF-8, else Shift-JIS. Values keep the first
/// 259 bytes that the file has for them. Any bytes will do: what is not a catalogue yields no texts.
MessageCatalogue decode_catalogue(std::string_view bytes);

/// Reads a catalogue file of up to 1 MiB; nothing when it cannot be read.
std::optional<MessageCatalogue> read_catalogue(const std::string& path);

} // namespace quillon
