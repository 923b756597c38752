// SPDX-License-Identifier: MIT
// Reading listings and writing reports.
#include "terminal/check_command.h"

#include "core/program.h"
#include "files/file_reading.h"
#include "terminal/printing.h"
#include "tooling/check.h"

#include <nlohmann/json.hpp>

#include <sstream>
#include <utility>

namespace quillon {
namespace {

const char* severity_of(const Finding& finding) { return finding.is_error ? "error" : "warning"; }

std::string report_text(const std::string& file, const CheckReport& report) {
    std::ostringstream text;
    for (const Finding& f : report.findings)
        text << printable(file) << ':' << f.line << ':' << f.column << ": " << severity_of(f) << ": " << f.text << '\n';
    return text.str();
}

void print_untold(const std::string& file, const CheckReport& report) {
    const std::size_t untold = report.errors + report.warnings - report.findings.size();
    if (untold != 0)
        print_error(file + ": " + std::to_string(untold) + " more findings are not listed");
}

nlohmann::json to_json(const std::string& file, const CheckReport& report) {
    nlohmann::json findings = nlohmann::json::array();
    for (const Finding& f : report.findings)
        findings.push_back({{"line", f.line},
                            {"column", f.column},
                            {"severity", severity_of(f)},
                            {"kind", finding_word(f.kind)},
                            {"text", f.text}});
    return {{"file", file}, {"errors", report.errors}, {"warnings", report.warnings}, {"findings", findings}};
}

FileContents read_listing(const std::string& path) {
    return read_file(path == "-" ? "/dev/stdin" : path, LISTING_SIZE_MAX, FileKind::ANY);
}

} // namespace

CheckStatus check_listings(const CheckOptions& options) {
    CheckStatus status = CHECK_NO_ERROR;
    nlohmann::json reports = nlohmann::json::array();
    for (const std::string& path : options.listings) {
        FileContents listing = read_listing(path);
        if (listing.status != ReadStatus::READ) {
            print_error("cannot read " + path + ": " + read_fault_text(listing));
            status = CHECK_UNREADABLE;
            continue;
        }
        const CheckReport report = check_listing(std::move(listing.bytes));
        if (report.errors != 0 && status == CHECK_NO_ERROR)
            status = CHECK_ERRORS;
        if (options.json)
            reports.push_back(to_json(path, report));
        else if (write_output(report_text(path, report)))
            print_untold(path, report);
    }
    // Names of files may be no UTF-8, and hold what a terminal obeys: ASCII alone.
    if (options.json)
        write_output(reports.dump(2, ' ', true, nlohmann::json::error_handler_t::replace) + "\n");
    return static_cast<CheckStatus>(status_with_output(status));
}

} // namespace quillon
