// SPDX-License-Identifier: MIT
// Checking listings without running them: what the machine would refuse, and what is probably not meant. It stands on
// core's scanner and loader alone and changes no machine; a fuzzer may link it as it stands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// What can be wrong with a listing.
enum class FindingKind {
#define FINDING(name, word) name,
#include "tooling/check_findings.def"
};

/// The word that stands for a kind in reports for machines ("no-such-line"); it never changes.
std::string_view finding_word(FindingKind kind);

/// Whether the machine does not load a listing in which this is found.
bool is_load_fault(FindingKind kind);

/// Something found in a listing.
struct Finding {
    FindingKind kind{};
    bool is_error = false; ///< the machine refuses this when it gets there, or the whole listing; else a warning
    int line = 0;          ///< in the file, from 1
    int column = 0;        ///< byte within the line, from 1
    std::string text;      ///< for a person: printable ASCII, one line
};

/// All that was found in one listing, in the order of the text.
struct CheckReport {
    std::vector<Finding> findings; ///< at most CHECK_FINDINGS_MAX
    std::size_t errors = 0;        ///< counted beyond that as well
    std::size_t warnings = 0;
};

constexpr std::size_t CHECK_FINDINGS_MAX = 5000;

/// Checks the text of a listing file, any bytes. A listing without an error can be loaded by the machine.
CheckReport check_listing(std::string text);

} // namespace quillon
