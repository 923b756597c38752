// SPDX-License-Identifier: MIT
// Loading listings into the machine.
#include "core/program.h"

#include "core/controls.h"
#include "core/errors.h"
#include "core/run_control.h"

#include <utility>

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

void compose_part_fault(Machine& m, const ListingFault& fault) {
    const MessageId message = message_of(fault.part);
    if (fault.part == ListingPart::NO_AREA)
        compose_system_message(m, message);
    else if (fault.part == ListingPart::LINE_NUMBER_TOO_LONG)
        compose_system_message(m, message, "(MAX:7):%d LINE", fault.line);
    else
        compose_system_message(m, message, ":%d LINE", fault.line);
}

void compose_fault(Machine& m, const ListingFault& fault) {
    switch (fault.kind) {
    case ListingFault::Kind::PART: return compose_part_fault(m, fault);
    case ListingFault::Kind::AREA_FULL:
        return compose_system_message(m, MESSAGE_TABLE_FULL, "(MAX:%d)", LINES_PER_AREA);
    case ListingFault::Kind::DATA_FULL:
        return compose_system_message(m, MESSAGE_TABLE_FULL, "(MAX:%d)", DATA_INDEX_SIZE);
    case ListingFault::Kind::DATA_SEPARATOR: return compose_system_message(m, MESSAGE_DATA_SEPARATOR);
    case ListingFault::Kind::UTF16: return compose_system_message(m, MESSAGE_UTF16);
    case ListingFault::Kind::TOO_LARGE: return compose_system_message(m, MESSAGE_OUT_OF_MEMORY);
    }
}

/// Puts a listing in the place of the one before; positions in that one are gone with it.
void take_listing(Machine& m, std::shared_ptr<const Listing> listing) {
    m.listing.pointer = std::move(listing);
    m.eval.next = 0;
    m.entry.saved_next = 0;
    m.program.data_pos = 0;
    m.random_seed = m.around->host.milliseconds();
    reset_machine(m);
}

} // namespace

LoadResult load_listing_text(Machine& m, std::string text) {
    ListingFault fault;
    std::shared_ptr<const Listing> listing = make_listing(std::move(text), fault);
    if (listing != nullptr) {
        take_listing(m, std::move(listing));
        return LoadResult::LOADED;
    }
    compose_fault(m, fault);
    if (fault.kind == ListingFault::Kind::TOO_LARGE)
        return LoadResult::UNREADABLE;
    unload_listing(m);
    m.error.error_detail.clear();
    return LoadResult::FAULTY;
}

void unload_listing(Machine& m) { take_listing(m, empty_listing()); }

TokenIndex select_area(Machine& m, int n) {
    const ProgramArea& area = m.listing->areas[static_cast<std::size_t>(n)];
    if (!area.used) {
        raise_error(m, ERROR_RANGE, MESSAGE_NO_SUCH_AREA, "[Page:%d]", n);
        return NOWHERE;
    }
    m.program.cur_area = n;
    m.program.cur_line = 0;
    m.program.stmt_start = line_start(m, 0);
    return m.program.stmt_start;
}

char area_mark(const Machine& m, int n) {
    return m.listing->areas[static_cast<std::size_t>(n)].used ? '_' : static_cast<char>('0' + n);
}

bool area_is_empty(const Machine& m, int n) { return m.listing->areas[static_cast<std::size_t>(n)].lines.empty(); }

void restore_area_data(Machine& m) {
    const int entry = find_area_data(*m.listing, m.program.cur_area);
    if (entry < 0)
        compose_system_message(m, MESSAGE_NO_DATA_INDEX);
    m.program.data_pos = entry + 1;
}

void advance_line(Machine& m) {
    const int line_count = static_cast<int>(current_area(m).lines.size());
    if (m.program.cur_line < line_count)
        ++m.program.cur_line;
    if (m.program.cur_line < line_count)
        m.eval.next = line_start(m, m.program.cur_line);
    else
        m.run.program_ended = true;
}

TokenIndex line_start(const Machine& m, int line) {
    const auto& lines = current_area(m).lines;
    const auto index = static_cast<std::size_t>(line);
    return index < lines.size() ? lines[index].tokens : NOWHERE;
}

} // namespace quillon
