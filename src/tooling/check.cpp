// SPDX-License-Identifier: MIT
// Taking a listing apart, and the report.
#include "tooling/check.h"

#include "core/charset.h"
#include "core/data_items.h"
#include "core/listing_elements.h"
#include "core/machine.h"
#include "core/scanner.h"
#include "tooling/check_listing.h"

#include <algorithm>
#include <tuple>

namespace quillon {
namespace {

constexpr std::string_view FINDING_WORDS[] = {
#define FINDING(name, word) word,
#include "tooling/check_findings.def"
};

// What cannot be loaded.

struct ListingFault {
    ListingPart part;
    FindingKind kind;
    const char* text;
};

// clang-format off
constexpr ListingFault LISTING_FAULTS[] = {
    {ListingPart::NO_AREA,               FindingKind::NO_AREA,               "the listing has no program area: a header such as [P0] is missing"},
    {ListingPart::TEXT_OUTSIDE_AREA,     FindingKind::TEXT_OUTSIDE_AREA,     "text outside any program area: only a header such as [P0] or a comment may stand here"},
    {ListingPart::HEADER_WITHOUT_DIGIT,  FindingKind::BAD_HEADER,            "the header has no digit: it is [P0] to [P9]"},
    {ListingPart::HEADER_NOT_CLOSED,     FindingKind::BAD_HEADER,            "the header is not closed by \"]\""},
    {ListingPart::AREA_TWICE,            FindingKind::AREA_TWICE,            "this program area was there already"},
    {ListingPart::NO_LINE_NUMBER,        FindingKind::NO_LINE_NUMBER,        "the line does not begin with a number"},
    {ListingPart::LINE_NUMBER_TOO_LONG,  FindingKind::LINE_NUMBER_TOO_LONG,  "the line number has more than 7 digits"},
    {ListingPart::NO_BLANK_AFTER_NUMBER, FindingKind::NO_BLANK_AFTER_NUMBER, "a blank is missing behind the line number"},
    {ListingPart::LINE_NUMBER_ORDER,     FindingKind::LINE_NUMBER_ORDER,     "the line number is not greater than the one before it"},
};
// clang-format on

/// The line of the file that a place lies in.
CheckedLine line_at(const CheckedListing& listing, const char* at, int file_line) {
    CheckedLine line;
    line.file_line = file_line;
    line.begin = at;
    while (line.begin > listing.text.data() && line.begin[-1] != '\n' && line.begin[-1] != '\0')
        --line.begin;
    return line;
}

void note_fault(CheckedListing& listing, const ListingSplitter& s, ListingPart part) {
    const bool of_header = part == ListingPart::HEADER_WITHOUT_DIGIT || part == ListingPart::HEADER_NOT_CLOSED ||
                           part == ListingPart::TEXT_OUTSIDE_AREA || part == ListingPart::AREA_TWICE;
    listing.all_areas_known = listing.all_areas_known && !of_header;
    const CheckedLine line = line_at(listing, s.at, s.at_line);
    for (const ListingFault& fault : LISTING_FAULTS) {
        if (fault.part == part)
            add_finding(listing, fault.kind, true, line, s.at, fault.text);
    }
}

/// The area that a line belongs to; lines without a header of their own have one too.
CheckedArea& area_for(CheckedListing& listing, bool new_area, int number) {
    if (new_area || listing.areas.empty()) {
        listing.areas.emplace_back();
        listing.areas.back().area = number;
    }
    return listing.areas.back();
}

void add_line(CheckedListing& listing, CheckedArea& area, const ListingSplitter& s) {
    CheckedLine line = line_at(listing, s.at, s.at_line);
    line.number = s.number;
    line.text = s.text;
    if (area.area >= 0 && area.lines.size() == LINES_PER_AREA)
        add_finding(listing, FindingKind::TOO_MANY_LINES, true, line, s.at, "a program area holds 512 lines at most");
    area.by_number.emplace(line.number, static_cast<int>(area.lines.size()));
    area.lines.push_back(line);
    listing.text[static_cast<std::size_t>(s.text_end - listing.text.data())] = '\0';
}

void take_apart(CheckedListing& listing) {
    ListingSplitter s = split_listing(listing.text.data());
    int header = 0; // of the lines that come
    bool new_area = true;
    for (ListingPart part = next_listing_part(s); part != ListingPart::END; part = next_listing_part(s)) {
        if (part == ListingPart::HEADER) {
            header = s.area;
            new_area = true;
        } else if (part == ListingPart::LINE) {
            new_area = new_area || header != s.area;
            header = s.area;
            add_line(listing, area_for(listing, new_area, header), s);
            new_area = false;
        } else {
            note_fault(listing, s, part);
        }
    }
    listing.headers = s.seen;
}

// DATA.

/// Counts the entries of the machine's index of DATA, which has room for so many.
struct DataCount {
    int entries = 1; // the end has one, too
    bool told = false;
};

void count_entry(CheckedListing& listing, DataCount& count, const CheckedLine& line, const char* at) {
    if (++count.entries <= DATA_INDEX_SIZE || count.told)
        return;
    count.told = true;
    add_finding(listing, FindingKind::TOO_MUCH_DATA, true, line, at,
                "too much DATA: areas, DATA statements and items together may be 511 at most");
}

const char* check_data(CheckedListing& listing, DataCount& count, const CheckedLine& line, const char* p) {
    constexpr std::size_t STRING_MAX = 30; // of $
    DataText item;
    bool whole = true;
    for (const char* at = skip_blanks(p); read_data_item(p, item, whole); at = skip_blanks(p)) {
        count_entry(listing, count, line, at);
        listing.has_data = true;
        if (item.size() > STRING_MAX)
            add_finding(listing, FindingKind::DATA_CUT, false, line, at,
                        "the DATA item is cut: no string takes more than 30 characters of it");
        if (!skip_data_separator(p)) {
            add_finding(listing, FindingKind::DATA_SEPARATOR, true, line, p, "\",\" is missing behind the DATA item");
            break;
        }
    }
    return p;
}

void check_line_data(CheckedListing& listing, DataCount& count, CheckedLine& line) {
    const char* p = line.text;
    for (Token token = scan_token(p); token.code != TOKEN_END && token.code != TOKEN_REM; token = scan_token(p)) {
        p = token.end;
        if (token.code != TOKEN_DATA)
            continue;
        line.has_data = true;
        count_entry(listing, count, line, token.begin);
        p = check_data(listing, count, line, p);
    }
}

/// In the order of the areas' numbers, as the machine does it.
void check_all_data(CheckedListing& listing) {
    DataCount count;
    count.entries += static_cast<int>(std::count(listing.headers.begin(), listing.headers.end(), true));
    for (int number = -1; number < AREA_COUNT; ++number) {
        for (CheckedArea& area : listing.areas) {
            if (area.area != number)
                continue;
            DataCount apart; // what has no header would not be loaded
            for (CheckedLine& line : area.lines)
                check_line_data(listing, number < 0 ? apart : count, line);
        }
    }
}

/// In the order of the text; what was found twice is told once.
void order_findings(CheckReport& report) {
    auto& findings = report.findings;
    const auto key = [](const Finding& f) { return std::tie(f.line, f.column, f.kind); };
    std::stable_sort(findings.begin(), findings.end(),
                     [key](const Finding& a, const Finding& b) { return key(a) < key(b); });
    const auto last = std::unique(findings.begin(), findings.end(),
                                  [key](const Finding& a, const Finding& b) { return key(a) == key(b); });
    for (auto it = last; it != findings.end(); ++it)
        --(it->is_error ? report.errors : report.warnings);
    findings.erase(last, findings.end());
}

} // namespace

std::string_view finding_word(FindingKind kind) { return FINDING_WORDS[static_cast<std::size_t>(kind)]; }

bool is_load_fault(FindingKind kind) { return kind <= FindingKind::TOO_MUCH_DATA; }

void add_finding(CheckedListing& listing, FindingKind kind, bool is_error, const CheckedLine& line, const char* at,
                 std::string text) {
    CheckReport& report = listing.report;
    ++(is_error ? report.errors : report.warnings);
    if (report.findings.size() < CHECK_FINDINGS_MAX)
        report.findings.push_back(
            {kind, is_error, line.file_line, static_cast<int>(at - line.begin) + 1, std::move(text)});
}

const CheckedLine& line_of(const CheckedListing& listing, int area, int line) {
    return listing.areas[static_cast<std::size_t>(area)].lines[static_cast<std::size_t>(line)];
}

const CheckedArea* find_area(const CheckedListing& listing, int number) {
    const auto found = std::find_if(listing.areas.begin(), listing.areas.end(),
                                    [number](const CheckedArea& area) { return area.area == number; });
    return found == listing.areas.end() ? nullptr : &*found;
}

/// Finds what is wrong with the file as such, and takes its text from it. False when there is none.
bool take_text(CheckedListing& listing, std::string file) {
    const int cut_line = line_cut_by_nul(file);
    const bool can_be_read = !is_utf16(file);
    trim_listing(file);
    listing.text = std::move(file);
    const char* end = listing.text.data() + listing.text.size();
    if (can_be_read && cut_line != 0)
        add_finding(listing, FindingKind::CUT_BY_NUL, false, line_at(listing, end, cut_line), end,
                    "a NUL character ends the listing here: what follows is left out");
    if (!can_be_read)
        add_finding(listing, FindingKind::UTF16, true, line_at(listing, listing.text.data(), 1), listing.text.data(),
                    "the listing is UTF-16 text: save it as UTF-8 or ASCII");
    return can_be_read;
}

CheckReport check_listing(std::string text) {
    CheckedListing listing;
    if (!take_text(listing, std::move(text)))
        return std::move(listing.report);
    take_apart(listing);
    check_all_data(listing);
    for (std::size_t area = 0; area < listing.areas.size(); ++area) {
        for (std::size_t line = 0; line < listing.areas[area].lines.size(); ++line)
            check_line(listing, static_cast<int>(area), static_cast<int>(line));
    }
    check_loops(listing);
    order_findings(listing.report);
    return std::move(listing.report);
}

} // namespace quillon
