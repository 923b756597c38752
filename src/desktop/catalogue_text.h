// SPDX-License-Identifier: MIT
// Texts of the message catalogue as the toolkit takes them.
#pragma once

#include "core/messages.h"

#include <QString>

namespace quillon {

/// The text of an entry; `otherwise` (UTF-8) where the catalogue has none, as a user's own may.
inline QString catalogue_text(const MessageCatalogue& catalogue, const char* section, int number,
                              const char* otherwise = "") {
    const char* text = lookup_message(catalogue, section, number);
    return QString::fromUtf8(*text != '\0' ? text : otherwise);
}

} // namespace quillon
