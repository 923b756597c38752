// Loading listings: splitting the text into areas and lines. Nothing is tokenised; lines point into the
// text, whose line feeds become NULs.
#include "core/listing.h"

#include "core/data_index.h"
#include "core/errors.h"
#include "core/listing_elements.h"

#include <algorithm>

namespace quillon {
namespace {

/// The text of a fault, save for those that say more than their line.
MessageId message_of(ListingPart fault) {
    switch (fault) {
    case ListingPart::NO_AREA: return MESSAGE_NO_LISTING;
    case ListingPart::TEXT_OUTSIDE_AREA: return MESSAGE_TEXT_OUTSIDE_AREA;
    case ListingPart::HEADER_NOT_CLOSED: return MESSAGE_HEADER_NOT_CLOSED;
    case ListingPart::AREA_TWICE: return MESSAGE_AREA_TWICE;
    case ListingPart::LINE_NUMBER_TOO_LONG: return MESSAGE_LINE_NUMBER_LENGTH;
    case ListingPart::NO_BLANK_AFTER_NUMBER: return MESSAGE_NO_BLANK_AFTER_NUMBER;
    case ListingPart::LINE_NUMBER_ORDER: return MESSAGE_LINE_NUMBER_ORDER;
    default: return MESSAGE_BAD_LINE_START;
    }
}

void compose_listing_fault(Machine& m, ListingPart fault, int line) {
    const MessageId message = message_of(fault);
    if (fault == ListingPart::NO_AREA)
        compose_system_message(m, message);
    else if (fault == ListingPart::LINE_NUMBER_TOO_LONG)
        compose_system_message(m, message, "(MAX:7):%d LINE", line);
    else
        compose_system_message(m, message, ":%d LINE", line);
}

/// Stores a line; its line feed becomes the NUL that the scanner stops at. False when the area is full.
bool store_line(Machine& m, const ListingSplitter& s) {
    ProgramArea& area = m.areas[static_cast<std::size_t>(s.area)];
    if (area.line_count == LINES_PER_AREA) {
        compose_system_message(m, MESSAGE_TABLE_FULL, "(MAX:%d)", LINES_PER_AREA);
        return false;
    }
    area.lines[static_cast<std::size_t>(area.line_count++)] = {s.number, s.text};
    m.listing_text[static_cast<std::size_t>(s.text_end - m.listing_text.data())] = '\0';
    return true;
}

/// Splits `listing_text` into areas and lines; false on a fault.
bool analyze_listing(Machine& m) {
    ListingSplitter s = split_listing(m.listing_text.data());
    for (;;) {
        const ListingPart part = next_listing_part(s);
        switch (part) {
        case ListingPart::END: return true;
        case ListingPart::HEADER: m.areas[static_cast<std::size_t>(s.area)].used = true; break;
        case ListingPart::LINE:
            if (!store_line(m, s))
                return false;
            break;
        default: compose_listing_fault(m, part, s.at_line); return false;
        }
    }
}

} // namespace

LoadResult load_listing_text(Machine& m, std::string text) {
    unload_listing(m);
    if (is_utf16(text)) {
        compose_system_message(m, MESSAGE_UTF16);
        return LoadResult::FAULTY;
    }
    trim_listing(text);
    m.listing_text = std::move(text);
    if (!analyze_listing(m) || !build_data_index(m)) {
        unload_listing(m);
        m.error_detail.clear();
        return LoadResult::FAULTY;
    }
    fill_scan_cache(m.scan_cache, m.listing_text, m.areas);
    reset_expressions(m.expression_cache, m.scan_cache.tokens.size());
    return LoadResult::LOADED;
}

void unload_listing(Machine& m) {
    drop_scan_cache(m.scan_cache);
    reset_expressions(m.expression_cache, 0);
    m.listing_text.clear();
    m.scan_ptr = NO_TEXT;
    m.saved_scan_ptr = NO_TEXT;
    clear_program_areas(m);
    clear_data_index(m);
    reset_machine(m);
}

const char* select_area(Machine& m, int n) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(n)];
    if (!area.used) {
        raise_error(m, ERROR_RANGE, MESSAGE_NO_SUCH_AREA, "[Page:%d]", n);
        return nullptr;
    }
    m.cur_area = n;
    m.cur_line = 0;
    m.stmt_start = area.lines[0].text;
    return m.stmt_start;
}

char area_mark(const Machine& m, int n) {
    return m.areas[static_cast<std::size_t>(n)].used ? '_' : static_cast<char>('0' + n);
}

bool area_is_empty(const Machine& m, int n) { return m.areas[static_cast<std::size_t>(n)].line_count == 0; }

void advance_line(Machine& m) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    if (m.cur_line < area.line_count)
        ++m.cur_line;
    if (m.cur_line < area.line_count)
        m.scan_ptr = area.lines[static_cast<std::size_t>(m.cur_line)].text;
    else
        m.program_ended = 1;
}

int find_line(Machine& m, int number) {
    ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    std::uint16_t& hint = area.found_lines[static_cast<unsigned>(number) % area.found_lines.size()];
    if (hint < area.line_count && area.lines[hint].number == number)
        return hint;
    const auto* begin = area.lines.data();
    const auto* end = begin + area.line_count;
    const auto* found =
        std::lower_bound(begin, end, number, [](const ProgramLine& line, int wanted) { return line.number < wanted; });
    if (found == end || found->number != number)
        return -1;
    hint = static_cast<std::uint16_t>(found - begin);
    return hint;
}

} // namespace quillon
