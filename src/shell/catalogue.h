// SPDX-License-Identifier: MIT
// Message catalogues as text.
#pragma once

#include "core/messages.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

/// A value keeps so many bytes, as it is written in the catalogue.
constexpr std::size_t MESSAGE_VALUE_MAX = 259;

/// Makes a value, in the catalogue's own encoding, a message in UTF-8, and cuts it.
using MessageOfValue = std::string (*)(std::string_view value);

/// A value that is UTF-8 already, cut after a whole character.
std::string utf8_message(std::string_view value);

/// Reads a catalogue: sections of keys "M_000"; "@" in a message is a line break. Any text will do: what is not a
/// catalogue yields no messages.
MessageCatalogue parse_catalogue(std::string_view text, MessageOfValue message_of_value = utf8_message);

} // namespace quillon
