// SPDX-License-Identifier: MIT
// Which message catalogue the machine of `run` and `play` speaks by.
#pragma once

#include <string>

namespace quillon {

struct MessageCatalogue;

/// Reads the catalogue that was named, or without a name that of the user's language, where it is installed. False,
/// with a message on standard error, when the one that was named cannot be read.
bool use_catalogue(MessageCatalogue& chosen, const std::string& named);

} // namespace quillon
