// SPDX-License-Identifier: MIT
// A loaded listing: its text, areas and lines, DATA and tokens. A load makes it in one piece; then it never changes,
// and every copy of a machine shares it. Nothing here knows the machine.
#pragma once

#include "core/fast_code.h"
#include "core/listing_elements.h"
#include "core/program_token.h"
#include "core/text.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

constexpr int AREA_COUNT = 10;
constexpr int LINES_PER_AREA = 512;
constexpr int DATA_INDEX_SIZE = 512;

/// A listing of more bytes than this is refused.
constexpr std::size_t LISTING_SIZE_MAX = std::size_t{1} << 20;

/// A line of a program area.
struct ProgramLine {
    int number = 0;
    SourceOffset text = 0; ///< right after the line number; the line ends at a NUL
    TokenIndex tokens = 0; ///< its first token
};

/// A program area. One without lines counts as empty.
struct ProgramArea {
    bool used = false;              ///< the listing has a header for it
    std::vector<ProgramLine> lines; ///< in listing order, numbers strictly ascending; at most LINES_PER_AREA
};

/// An entry of the DATA index.
struct DataItem {
    enum Kind : int { END = -1, ITEM = 0, LINE = 1, AREA = 2 };
    Kind kind = END;
    int arg = 0;          ///< line number of a LINE, area number of an AREA
    BoundedText<63> text; ///< of an ITEM
};

struct Listing {
    std::string text;     ///< without what follows its end; line feeds of program lines are NULs
    std::string literals; ///< the decoded texts of the string literals, one after the other
    std::array<ProgramArea, AREA_COUNT> areas;
    std::vector<ProgramToken> tokens; ///< of all lines, in their order; never empty
    std::vector<DataItem> data;       ///< ends with an END; at most DATA_INDEX_SIZE entries
    mutable FastCode fast;            ///< made from the tokens when they first run; nothing of it shows
};

/// Why a text is no listing.
struct ListingFault {
    enum class Kind {
        PART,           ///< `part` at `line`
        AREA_FULL,      ///< more than LINES_PER_AREA lines
        DATA_FULL,      ///< more than DATA_INDEX_SIZE entries
        DATA_SEPARATOR, ///< a DATA item not followed by ","
        TOO_LARGE,      ///< more than LISTING_SIZE_MAX bytes
        UTF16,          ///< not written in single bytes
    };
    Kind kind = Kind::PART;
    ListingPart part = ListingPart::END;
    int line = 0; ///< in the text, from 1
};

/// The listing of a machine without one: no areas, and a single end of a line for positions that mean nothing.
std::shared_ptr<const Listing> empty_listing();

/// Makes a listing of a text; null, with the first fault, where that is not possible.
std::shared_ptr<const Listing> make_listing(std::string text, ListingFault& fault);

/// The index of the line with this number in an area (0-9), -1 when there is none.
int find_line(const Listing& listing, int area, int number);

/// Whether the DATA index begins an area at `index`, ends there, or has no such entry: where READ must stop.
bool ends_area_data(const Listing& listing, int index);

/// The index of an area's own entry in the DATA index, -1 when it has none.
int find_area_data(const Listing& listing, int area);

} // namespace quillon
