// SPDX-License-Identifier: MIT
// Making listings: splitting the text into areas and lines, scanning the tokens, finding the DATA.
#include "core/listing.h"

#include "core/data_items.h"

#include <algorithm>
#include <utility>

namespace quillon {
namespace {

/// A listing under construction.
struct Builder {
    Listing& listing;
    ListingFault& fault;
};

bool fail(Builder& b, ListingFault fault) {
    b.fault = fault;
    return false;
}

/// Stores a line; its line feed becomes the NUL that the scanner stops at. False when the area is full.
bool add_line(Builder& b, const ListingSplitter& s) {
    auto& lines = b.listing.areas[static_cast<std::size_t>(s.area)].lines;
    if (lines.size() == LINES_PER_AREA)
        return fail(b, {ListingFault::Kind::AREA_FULL});
    char* text = b.listing.text.data();
    lines.push_back({s.number, static_cast<SourceOffset>(s.text - text), 0});
    text[s.text_end - text] = '\0';
    return true;
}

/// Splits the text into areas and lines; false at the first fault.
bool split_lines(Builder& b) {
    ListingSplitter s = split_listing(b.listing.text.data());
    for (;;) {
        const ListingPart part = next_listing_part(s);
        switch (part) {
        case ListingPart::END: return true;
        case ListingPart::HEADER: b.listing.areas[static_cast<std::size_t>(s.area)].used = true; break;
        case ListingPart::LINE:
            if (!add_line(b, s))
                return false;
            break;
        default: return fail(b, {ListingFault::Kind::PART, part, s.at_line});
        }
    }
}

bool add_data_entry(Builder& b, DataItem entry) {
    if (b.listing.data.size() == DATA_INDEX_SIZE)
        return fail(b, {ListingFault::Kind::DATA_FULL});
    b.listing.data.push_back(std::move(entry));
    return true;
}

/// Stores the items of the DATA statement whose word ends at `p`, and moves past them.
bool add_data_items(Builder& b, const char*& p) {
    DataText item;
    bool whole = true;
    while (read_data_item(p, item, whole)) {
        if (!add_data_entry(b, {DataItem::ITEM, 0, item}))
            return false;
        if (!skip_data_separator(p))
            return fail(b, {ListingFault::Kind::DATA_SEPARATOR});
    }
    return true;
}

/// Indexes the DATA statements of a line from the first one on, whose word ends at `p`. They are read as items, which
/// may end elsewhere than the statement's tokens do.
bool index_data(Builder& b, const char* p, int number) {
    Token token;
    token.code = TOKEN_DATA;
    while (token.code != TOKEN_END && token.code != TOKEN_REM) {
        if (token.code == TOKEN_DATA && !(add_data_entry(b, {DataItem::LINE, number, {}}) && add_data_items(b, p)))
            return false;
        token = scan_token(p);
        p = token.end;
    }
    return true;
}

/// Scans a line to its end. Returns where its first DATA word ends, null when it has none before a REM.
const char* scan_line(Listing& listing, ProgramLine& line) {
    const char* text = listing.text.data();
    const char* data = nullptr;
    bool in_remark = false;
    line.tokens = static_cast<TokenIndex>(listing.tokens.size());
    Token token;
    token.end = text + line.text;
    do {
        token = scan_token(token.end);
        listing.tokens.push_back(
            make_program_token(token, static_cast<SourceOffset>(token.begin - text), listing.literals));
        in_remark = in_remark || token.code == TOKEN_REM;
        if (token.code == TOKEN_DATA && data == nullptr && !in_remark)
            data = token.end;
    } while (token.code != TOKEN_END);
    return data;
}

bool scan_areas(Builder& b) {
    for (int n = 0; n < AREA_COUNT; ++n) {
        ProgramArea& area = b.listing.areas[static_cast<std::size_t>(n)];
        if (area.used && !add_data_entry(b, {DataItem::AREA, n, {}}))
            return false;
        for (ProgramLine& line : area.lines) {
            const char* data = scan_line(b.listing, line);
            if (data != nullptr && !index_data(b, data, line.number))
                return false;
        }
    }
    return add_data_entry(b, {});
}

} // namespace

std::shared_ptr<const Listing> empty_listing() {
    static const std::shared_ptr<const Listing> EMPTY = [] {
        auto listing = std::make_shared<Listing>();
        listing->tokens.emplace_back();
        listing->data.emplace_back();
        reserve_fast_code(listing->fast, 1);
        return listing;
    }();
    return EMPTY;
}

std::shared_ptr<const Listing> make_listing(std::string text, ListingFault& fault) {
    auto listing = std::make_shared<Listing>();
    Builder builder{*listing, fault};
    if (text.size() > LISTING_SIZE_MAX)
        return fail(builder, {ListingFault::Kind::TOO_LARGE}), nullptr;
    if (is_utf16(text))
        return fail(builder, {ListingFault::Kind::UTF16}), nullptr;
    trim_listing(text);
    listing->text = std::move(text);
    if (!split_lines(builder) || !scan_areas(builder))
        return nullptr;
    if (listing->tokens.empty()) // headers without lines
        listing->tokens.emplace_back();
    reserve_fast_code(listing->fast, listing->tokens.size());
    return listing;
}

int find_line(const Listing& listing, int area, int number) {
    const auto& lines = listing.areas[static_cast<std::size_t>(area)].lines;
    auto& hints = listing.fast.found_lines[static_cast<std::size_t>(area)];
    std::uint16_t& hint = hints[static_cast<unsigned>(number) % hints.size()];
    if (hint < lines.size() && lines[hint].number == number)
        return hint;
    const auto found = std::lower_bound(lines.begin(), lines.end(), number,
                                        [](const ProgramLine& line, int wanted) { return line.number < wanted; });
    if (found == lines.end() || found->number != number)
        return -1;
    hint = static_cast<std::uint16_t>(found - lines.begin());
    return hint;
}

bool ends_area_data(const Listing& listing, int index) {
    if (static_cast<std::size_t>(index) >= listing.data.size())
        return true;
    const DataItem::Kind kind = listing.data[static_cast<std::size_t>(index)].kind;
    return kind == DataItem::AREA || kind == DataItem::END;
}

int find_area_data(const Listing& listing, int area) {
    for (std::size_t i = 0; i < listing.data.size(); ++i) {
        if (listing.data[i].kind == DataItem::AREA && listing.data[i].arg == area)
            return static_cast<int>(i);
    }
    return -1;
}

} // namespace quillon
