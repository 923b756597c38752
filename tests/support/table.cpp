// Splitting tables of test cases.
#include "tests/support/table.h"

#include <algorithm>
#include <stdexcept>

namespace quillon::testing {
namespace {

TableRow cells_of(std::string_view line) {
    TableRow cells;
    std::size_t at = line.find_first_not_of(' ');
    while (at < line.size()) {
        const std::size_t end = std::min(line.find("  ", at), line.find_last_not_of(' ') + 1);
        cells.emplace_back(line.substr(at, end - at));
        at = line.find_first_not_of(' ', end);
    }
    return cells;
}

} // namespace

std::vector<TableRow> table(std::string_view text) {
    std::vector<TableRow> rows;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        TableRow row = cells_of(text.substr(0, end));
        if (!row.empty())
            rows.push_back(std::move(row));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return rows;
}

std::vector<Case> cases(std::string_view text) {
    std::vector<Case> list;
    for (const TableRow& row : table(text)) {
        for (std::size_t i = 1; i < row.size(); ++i)
            list.push_back({row[i], row[0]});
    }
    return list;
}

std::vector<Case> arrow_cases(std::string_view text) {
    std::vector<Case> list;
    for (const TableRow& row : table(text)) {
        for (const std::string& cell : row) {
            const std::size_t arrow = cell.find(" ->");
            if (arrow == std::string::npos)
                throw std::invalid_argument("no arrow: " + cell);
            list.push_back({cell.substr(0, arrow), cell.substr(std::min(arrow + 4, cell.size()))});
            std::string& lines = list.back().text;
            for (std::size_t at = lines.find(" || "); at != std::string::npos; at = lines.find(" || "))
                lines.replace(at, 4, "\n");
        }
    }
    return list;
}

} // namespace quillon::testing
