// Tables of test cases as text in C++: cells with a line's end or two or more blanks between them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon::testing {

struct Case {
    std::string text;
    std::string outcome;
};

/// The cells of a table, "2+3*4 -> 14" each.
std::vector<Case> arrow_cases(std::string_view text);

} // namespace quillon::testing
