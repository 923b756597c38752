// SPDX-License-Identifier: MIT
// Texts by section and number: what the message catalogue holds once it has been read. Files are the host's business.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace quillon {

/// The texts of a catalogue in UTF-8, line breaks as CR LF, by section name and number.
struct MessageCatalogue {
    std::map<std::string, std::map<int, std::string>, std::less<>> sections;
};

/// The text of an entry, "" when the catalogue does not have it. It lives as long as the catalogue stays unchanged.
const char* lookup_message(const MessageCatalogue& catalogue, std::string_view section, int number);

} // namespace quillon
