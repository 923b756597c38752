// SPDX-License-Identifier: MIT
// The parts of a listing's text: headers of program areas, and numbered lines. Like the scanner it is pure: it changes
// no machine. After a fault it goes on, so that a checker finds all of them; the loader stops at the first.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace quillon {

/// A part of a listing, or what is wrong with one.
enum class ListingPart {
    END,    ///< of the text
    HEADER, ///< a program area begins
    LINE,   ///< a program line
    // Faults.
    NO_AREA,               ///< there is nothing but comments
    TEXT_OUTSIDE_AREA,     ///< something else than a header where only a header may stand
    HEADER_WITHOUT_DIGIT,  ///< "[P" without a digit
    HEADER_NOT_CLOSED,     ///< no "]" behind the digit
    AREA_TWICE,            ///< a header for an area that there was already
    NO_LINE_NUMBER,        ///< a line in an area that begins with no digit
    LINE_NUMBER_TOO_LONG,  ///< more than seven digits
    NO_BLANK_AFTER_NUMBER, ///< a line number not followed by a blank or tab
    LINE_NUMBER_ORDER,     ///< a number that is not greater than that of the line before it
};

/// Where the splitting of a listing has come to, and what was found last.
struct ListingSplitter {
    const char* p = nullptr;    ///< the next character
    int file_line = 1;          ///< its line in the text, from 1
    const char* at = nullptr;   ///< where the part found last begins, or its fault stands
    int at_line = 1;            ///< the line of that
    int area = -1;              ///< of HEADER: the area, 0-9
    int number = 0;             ///< of LINE
    const char* text = nullptr; ///< of LINE: what stands behind the number, up to `text_end`
    const char* text_end = nullptr;
    std::array<bool, 10> seen{}; ///< the areas that there were
    bool any_element = false;
    bool inside = false;       ///< lines may stand here
    bool line_pending = false; ///< a LINE whose number is faulty is to be found yet
    int last_number = -1;      ///< number of the line before, in the area
};

/// Begins with a text that ends at a NUL and outlives the splitter.
ListingSplitter split_listing(const char* text);

/// Finds the next part. After END there is nothing more to find. What follows a faulty header counts as an area of its
/// own; a line whose number has a fault, but is a number, is found once more as a LINE.
ListingPart next_listing_part(ListingSplitter& s);

/// The text of a file that counts: without a byte order mark, up to the first NUL or Ctrl-Z.
void trim_listing(std::string& text);

/// The line of a file with the NUL at which its text ends although more follows than an end may have; 0 for none.
int line_cut_by_nul(std::string_view file);

/// Whether a file says that it is UTF-16, in which no listing can be written.
bool is_utf16(std::string_view file);

} // namespace quillon
