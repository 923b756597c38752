// SPDX-License-Identifier: MIT
// What quillon-cli writes to standard output and standard error. Names of files, listings and catalogues come from
// anywhere: no byte of theirs reaches the terminal as a command to it.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The text on one line, with control characters (those of C1 included) as escapes: \x1b.
std::string printable(std::string_view text);

/// The same for a text of the catalogue, whose CR LF are line breaks: line feeds here.
std::string printable_lines(std::string_view text);

/// The same on one line.
std::string one_line(std::string_view text);

/// Writes "quillon-cli: TEXT" and a line feed to standard error, the text as one line.
void print_error(std::string_view text);

/// Says why a listing does not load, in the words of the catalogue.
void print_load_fault(const std::string& path, std::string_view text);

/// Writes to standard output, at once. False when that cannot be done: because nobody reads any more, or after a
/// failure, which is reported on standard error once.
bool write_output(std::string_view text);

/// The exit status of a program that would end with `status`: 2 when writing has failed.
int status_with_output(int status);

} // namespace quillon
