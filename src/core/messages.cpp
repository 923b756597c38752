// SPDX-License-Identifier: MIT
// Lookup of catalogue texts.
#include "core/messages.h"

namespace quillon {

const char* lookup_message(const MessageCatalogue& catalogue, std::string_view section, int number) {
    const auto found_section = catalogue.sections.find(section);
    if (found_section == catalogue.sections.end())
        return "";
    const auto found = found_section->second.find(number);
    return found == found_section->second.end() ? "" : found->second.c_str();
}

} // namespace quillon
