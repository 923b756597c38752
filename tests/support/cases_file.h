// SPDX-License-Identifier: MIT
// Tables of test cases in text files beside the tests, read as a person reads them: without C++'s quotes.
//
//   # a comment
//   == a heading, of the rows that follow
//   GOTO 10 || END | GOTO 20  => what each of the two shows
//
// "||" between blanks or at an end is a line feed in inputs and headings, " | " separates inputs that give the same,
// and " ;; " rows side by side. Blanks before "=>" are for the columns; after it comes one blank, and all that follows
// is expected as it is ("=>  5" expects " 5"). There may be nothing after "=>".
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::testing {

struct FileCase {
    std::string heading; ///< the last one above; empty when there is none
    std::string input;
    std::string expected;
    int line; ///< in its file, from 1
};

/// The cases of a text. Throws std::runtime_error with `name` and the line when there is something else in it than
/// comments, headings and rows, when a heading has no row, or when there is no row at all.
std::vector<FileCase> parse_cases(std::string_view text, const std::string& name);

/// The same of tests/`file`.
std::vector<FileCase> read_cases(const std::string& file);

/// What a case gives.
using OutcomeOfCase = std::function<std::string(const FileCase& row)>;

/// Expects of each case of tests/`file` that `outcome` gives what stands there. A failure names file and line.
void expect_cases(const std::string& file, const OutcomeOfCase& outcome);

/// The same with an outcome for each heading: the file has exactly these headings.
void expect_cases(const std::string& file, const std::map<std::string, OutcomeOfCase>& outcomes);

} // namespace quillon::testing
