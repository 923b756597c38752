// SPDX-License-Identifier: MIT
// Reading files of test cases line by line.
#include "tests/support/cases_file.h"

#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <stdexcept>

namespace quillon::testing {
namespace {

/// "||" between blanks, or at an end, is a line feed; a blank on either side belongs to it.
std::string with_line_feeds(std::string_view text) {
    std::string lines(text.substr(0, text.find_last_not_of(' ') + 1));
    for (std::size_t at = 0; (at = lines.find("||", at)) != std::string::npos;) {
        const bool blank_before = at > 0 && lines[at - 1] == ' ',
                   blank_behind = at + 2 < lines.size() && lines[at + 2] == ' ';
        const bool begins = blank_before || at == 0 || lines[at - 1] == '\n';
        if (!begins || !(blank_behind || at + 2 == lines.size())) {
            at += 2;
            continue;
        }
        lines.replace(at - (blank_before ? 1 : 0), 2 + (blank_before ? 1 : 0) + (blank_behind ? 1 : 0), "\n");
        at += blank_before ? 0 : 1;
    }
    return lines;
}

/// Reads "input => expected"; false when the line is no such row.
bool read_row(std::string_view line, FileCase& row) {
    const std::size_t arrow = (std::string(line) + " ").find(" => ");
    if (line[0] == ' ' || line.back() == ' ' || arrow == std::string::npos)
        return false;
    row.input = with_line_feeds(line.substr(0, arrow));
    row.expected = line.substr(std::min(arrow + 4, line.size()));
    return (row.expected + " ").find(" => ") == std::string::npos;
}

/// The parts of a text that has a separator between them.
std::vector<std::string> parts_of(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    parts.emplace_back(text);
    return parts;
}

/// Adds a case for each input of each row of a line; false where one is no row.
bool read_rows(std::string_view line, FileCase row, std::vector<FileCase>& rows) {
    for (const std::string& part : parts_of(line, " ;; ")) {
        if (part.empty() || !read_row(part, row))
            return false;
        for (const std::string& input : parts_of(row.input, " | ")) {
            rows.push_back(row);
            rows.back().input = input;
        }
    }
    return true;
}

/// What a row's outcome throws, for a word that it does not know, is a failure of this row.
std::string outcome_or_complaint(const OutcomeOfCase& outcome, const FileCase& row) {
    try {
        return outcome(row);
    } catch (const std::exception& complaint) {
        return std::string("not understood: ") + complaint.what();
    }
}

} // namespace

std::vector<FileCase> parse_cases(std::string_view text, const std::string& name) {
    std::vector<FileCase> rows;
    FileCase row{};
    const auto refuse = [&](const char* why) {
        throw std::runtime_error(name + ":" + std::to_string(row.line) + ": " + why);
    };
    std::istringstream lines{std::string(text)};
    bool awaits_row = true; ///< at first, and below a heading
    for (std::string line; std::getline(lines, line);) {
        ++row.line;
        if (line.empty() || line == "#" || line.starts_with("# "))
            continue;
        const bool is_heading = line.starts_with("== ") && line[3] != ' ';
        if (is_heading && awaits_row && !row.heading.empty())
            refuse("the heading before this one has no row");
        if (is_heading)
            row.heading = with_line_feeds(line.substr(3));
        else if (!read_rows(line, row, rows))
            refuse("no comment, no heading and no row");
        awaits_row = is_heading;
    }
    if (awaits_row)
        refuse("the file, or its last heading, has no row");
    return rows;
}

std::vector<FileCase> read_cases(const std::string& file) {
    return parse_cases(bytes_of(QUILLON_TESTS "/" + file), file);
}

void expect_cases(const std::string& file, const OutcomeOfCase& outcome) {
    for (const FileCase& row : read_cases(file)) {
        const ::testing::ScopedTrace place(file.c_str(), row.line, row.input);
        EXPECT_EQ(outcome_or_complaint(outcome, row), row.expected);
    }
}

void expect_cases(const std::string& file, const std::map<std::string, OutcomeOfCase>& outcomes) {
    std::set<std::string> unseen;
    for (const auto& [heading, outcome] : outcomes)
        unseen.insert(heading);
    expect_cases(file, [&](const FileCase& row) {
        unseen.erase(row.heading);
        return outcomes.contains(row.heading) ? outcomes.at(row.heading)(row) : "a heading that no test knows";
    });
    EXPECT_TRUE(unseen.empty()) << file << " has no rows below " << *unseen.begin();
}

} // namespace quillon::testing
