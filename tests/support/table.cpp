// Splitting tables of test cases.
#include "tests/support/table.h"

#include <algorithm>
#include <stdexcept>

namespace quillon::testing {

std::vector<Case> arrow_cases(std::string_view text) {
    std::string rest(text);
    for (std::size_t at = rest.find('\n'); at != std::string::npos; at = rest.find('\n'))
        rest.replace(at, 1, "  ");
    std::vector<Case> list;
    for (std::size_t at = rest.find_first_not_of(' '); at < rest.size(); at = rest.find_first_not_of(' ', at)) {
        const std::string cell = rest.substr(at, rest.find("  ", at) - at);
        const std::size_t arrow = cell.find(" ->");
        if (arrow == std::string::npos)
            throw std::invalid_argument("no arrow: " + cell);
        list.push_back({cell.substr(0, arrow), cell.substr(std::min(arrow + 4, cell.size()))});
        at += cell.size();
    }
    return list;
}

} // namespace quillon::testing
