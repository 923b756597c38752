// SPDX-License-Identifier: MIT
// Reading the items of DATA statements.
#include "core/data_items.h"

#include "core/charset.h"
#include "core/scanner.h"

namespace quillon {
namespace {

constexpr char ESCAPE_KEY = 27;
constexpr std::size_t DATA_TEXT_MAX = 63;

bool ends_line(char c) { return c == '\0' || c == '\n' || c == '\r' || c == ESCAPE_KEY; }

void append(DataText& item, char c, bool& whole) {
    whole = whole && item.size() < DATA_TEXT_MAX;
    item.push_back(c);
}

/// Between quotes; the closing one is passed. Kept blanks and commas are the point of them.
void read_quoted_item(const char*& p, DataText& item, bool& whole) {
    ++p;
    while (*p != '"' && !ends_line(*p))
        append(item, static_cast<char>(read_char(p)), whole);
    p += *p == '"' ? 1 : 0;
}

/// Up to the next "," or ":", without the blanks at its end.
void read_plain_item(const char*& p, DataText& item, bool& whole) {
    std::size_t length = 0; // up to the last character that is no blank
    bool whole_so_far = true;
    while (*p != ',' && *p != ':' && !ends_line(*p)) {
        const bool blank = *p == ' ' || *p == '\t';
        append(item, static_cast<char>(read_char(p)), whole_so_far);
        length = blank ? length : item.size();
        whole = blank ? whole : whole_so_far;
    }
    item.shorten(length);
}

} // namespace

bool read_data_item(const char*& p, DataText& item, bool& whole) {
    item.clear();
    whole = true;
    p = skip_blanks(p);
    if (ends_line(*p) || *p == ':') {
        p += *p == ':' ? 1 : 0;
        return false;
    }
    if (*p == '"')
        read_quoted_item(p, item, whole);
    else
        read_plain_item(p, item, whole);
    return true;
}

bool skip_data_separator(const char*& p) {
    p = skip_blanks(p);
    if (*p != ',')
        return ends_line(*p) || *p == ':';
    ++p;
    return true;
}

} // namespace quillon
