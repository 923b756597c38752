// Tables of test cases as text: one row on a line, cells with two or more blanks between them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon::testing {

using TableRow = std::vector<std::string>;

/// The rows of a table; empty lines are left out.
std::vector<TableRow> table(std::string_view text);

/// One case of a table that begins each line with what all other cells of the line give.
struct Case {
    std::string text;
    std::string outcome;
};

/// "14  2+3*4  20-6" are two cases with the outcome 14.
std::vector<Case> cases(std::string_view text);

/// The same of a table whose cells are "2+3*4 -> 14"; in the text, " || " stands for a line feed.
std::vector<Case> arrow_cases(std::string_view text);

} // namespace quillon::testing
