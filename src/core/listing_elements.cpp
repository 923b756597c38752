// SPDX-License-Identifier: MIT
// Splitting a listing's text.
#include "core/listing_elements.h"

#include "core/charset.h"

#include <algorithm>
#include <string_view>

namespace quillon {
namespace {

constexpr char CONTROL_Z = 26; ///< ends a listing
constexpr int NUMBER_LENGTH_MAX = 7;

bool starts_comment(char c) { return c == '#' || c == ';' || c == '\'' || c == ',' || c == '!'; }

void skip_line(ListingSplitter& s) {
    while (*s.p != '\0' && *s.p != '\n')
        ++s.p;
}

/// Blanks, line ends and comments between elements; false at the end of the text.
bool skip_to_element(ListingSplitter& s) {
    for (;;) {
        for (; *s.p == ' ' || *s.p == '\t' || *s.p == '\r' || *s.p == '\n'; ++s.p)
            s.file_line += *s.p == '\n' ? 1 : 0;
        if (!starts_comment(*s.p))
            return *s.p != '\0';
        skip_line(s);
    }
}

void begin_area(ListingSplitter& s, int area) {
    s.area = area;
    s.inside = true;
    s.last_number = -1;
}

/// Passes what cannot be a header; its lines belong to no area that there is.
ListingPart bad_header(ListingSplitter& s, ListingPart fault) {
    begin_area(s, -1);
    skip_line(s);
    return fault;
}

/// "[P", a digit, "]"; the character behind that is not looked at.
ListingPart read_header(ListingSplitter& s) {
    if (to_upper(s.p[1]) != 'P')
        return bad_header(s, ListingPart::TEXT_OUTSIDE_AREA);
    if (!is_digit(s.p[2]))
        return bad_header(s, ListingPart::HEADER_WITHOUT_DIGIT);
    if (s.p[3] != ']')
        return bad_header(s, ListingPart::HEADER_NOT_CLOSED);
    const int area = s.p[2] - '0';
    bool& seen = s.seen[static_cast<std::size_t>(area)];
    if (seen)
        return bad_header(s, ListingPart::AREA_TWICE);
    seen = true;
    begin_area(s, area);
    s.p += 4;
    if (*s.p != '\0' && *s.p != '\n')
        ++s.p;
    return ListingPart::HEADER;
}

/// What stands outside all areas; where it is a numbered line it is taken for the first of an area without a header.
ListingPart read_outside(ListingSplitter& s) {
    if (*s.p == '[')
        return read_header(s);
    if (is_digit(*s.p))
        begin_area(s, -1);
    else
        skip_line(s);
    return ListingPart::TEXT_OUTSIDE_AREA;
}

ListingPart finish_line(ListingSplitter& s) {
    s.line_pending = false;
    s.last_number = s.number;
    s.text = s.p;
    skip_line(s);
    s.text_end = s.p;
    if (*s.p == '\n') {
        ++s.p;
        ++s.file_line;
    }
    return ListingPart::LINE;
}

ListingPart read_line(ListingSplitter& s) {
    s.number = 0;
    for (; is_digit(*s.p); ++s.p) {
        if (s.p - s.at == NUMBER_LENGTH_MAX) {
            skip_line(s);
            return ListingPart::LINE_NUMBER_TOO_LONG;
        }
        s.number = s.number * 10 + (*s.p - '0');
    }
    s.line_pending = true;
    if (*s.p != ' ' && *s.p != '\t')
        return ListingPart::NO_BLANK_AFTER_NUMBER;
    if (s.number <= s.last_number)
        return ListingPart::LINE_NUMBER_ORDER;
    return finish_line(s);
}

} // namespace

ListingSplitter split_listing(const char* text) {
    ListingSplitter s;
    s.p = text;
    s.at = text;
    return s;
}

ListingPart next_listing_part(ListingSplitter& s) {
    if (s.line_pending)
        return finish_line(s);
    const bool more = skip_to_element(s);
    s.at = s.p;
    s.at_line = s.file_line;
    const bool first = !s.any_element;
    s.any_element = true;
    if (!more)
        return first ? ListingPart::NO_AREA : ListingPart::END;
    if (!s.inside)
        return read_outside(s);
    if (*s.p == '[')
        return read_header(s);
    if (is_digit(*s.p))
        return read_line(s);
    skip_line(s);
    return ListingPart::NO_LINE_NUMBER;
}

void trim_listing(std::string& text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    constexpr const char ENDS[] = {'\0', CONTROL_Z};
    const std::size_t end = text.find_first_of(std::string_view(ENDS, sizeof ENDS));
    if (end != std::string::npos)
        text.erase(end);
}

int line_cut_by_nul(std::string_view file) {
    constexpr std::string_view ENDING("\0\x1A \t\r\n", 6);
    const std::string_view text = file.substr(0, file.find_first_of(std::string_view("\0\x1A", 2)));
    const bool ends_at_nul = text.size() < file.size() && file[text.size()] == '\0';
    if (!ends_at_nul || file.find_first_not_of(ENDING, text.size()) == std::string_view::npos)
        return 0;
    return static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
}

bool is_utf16(std::string_view file) { return file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF"); }

} // namespace quillon
