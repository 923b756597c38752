// SPDX-License-Identifier: MIT
// What the parts of the checker share: the listing as it was taken apart, the findings, and what the statements told
// of the way that a program takes.
#pragma once

#include "core/token.h"
#include "tooling/check.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace quillon {

/// A program line as it stands in the file.
struct CheckedLine {
    int number = 0;
    int file_line = 0;
    const char* begin = nullptr; ///< of the file's line: columns count from here
    const char* text = nullptr;  ///< behind the number, up to a NUL
    bool has_data = false;
    bool goes_on = true; ///< the next line may follow upon it
};

/// The lines of a program area, or those behind a header that is none.
struct CheckedArea {
    int area = -1; ///< 0-9, -1 for none
    std::vector<CheckedLine> lines;
    std::map<int, int> by_number; ///< index of the line with a number
};

/// A place on the way of a program.
struct Step {
    enum Kind {
        TO_LINE,     ///< goes to line `value` of its area
        TO_AREA,     ///< goes to area `value`
        TO_ANY_LINE, ///< goes to a line that is computed
        TO_ANY_AREA,
        CALL, ///< a RETURN may lead back here
        RETURN,
        FOR,  ///< opens the loop over `value`
        NEXT, ///< ends a round of it
    };
    Kind kind{};
    int area = 0;  ///< index of the CheckedArea
    int line = 0;  ///< index of the line in it
    int value = 0; ///< line number, area number, or LOOP_ and letters
    const char* at = nullptr;
    bool conditional = false; ///< an IF stands before it on its line
};

constexpr int ANY_LOOP = -1; ///< a loop over a subscripted variable, or NEXT without one

/// A listing under examination.
struct CheckedListing {
    std::string text; ///< line feeds behind program lines are NULs
    std::vector<CheckedArea> areas;
    std::vector<Step> steps;        ///< in the order of the text
    bool steps_known = true;        ///< there were not too many
    std::array<bool, 10> headers{}; ///< the areas that there is a header for
    bool all_areas_known = true;
    bool has_data = false;
    CheckReport report;
};

/// Adds a finding at a place of a line.
void add_finding(CheckedListing& listing, FindingKind kind, bool is_error, const CheckedLine& line, const char* at,
                 std::string text);

/// The line that an index of a step means.
const CheckedLine& line_of(const CheckedListing& listing, int area, int line);

/// The area of this number, null when the listing has no lines for it.
const CheckedArea* find_area(const CheckedListing& listing, int number);

/// Checks the statements of one line and notes its steps.
void check_line(CheckedListing& listing, int area, int line);

/// Checks what only the whole listing tells: loops, by the steps that were noted.
void check_loops(CheckedListing& listing);

} // namespace quillon
