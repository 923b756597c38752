// Reading listings and writing reports.
#include "terminal/check_command.h"

#include "core/listing.h"
#include "shell/files.h"
#include "terminal/check.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <optional>

namespace quillon {
namespace {

const char* severity_of(const Finding& finding) { return finding.is_error ? "error" : "warning"; }

void print_report(const std::string& file, const CheckReport& report) {
    for (const Finding& f : report.findings)
        std::printf("%s:%d:%d: %s: %s\n", file.c_str(), f.line, f.column, severity_of(f), f.text.c_str());
    const std::size_t untold = report.errors + report.warnings - report.findings.size();
    if (untold != 0)
        std::fprintf(stderr, "quillon-cli: %s: %zu more findings are not told\n", file.c_str(), untold);
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

std::optional<std::string> read_listing(const std::string& path) {
    return read_whole_input(path == "-" ? "/dev/stdin" : path, LISTING_SIZE_MAX);
}

} // namespace

CheckStatus check_listings(const CheckOptions& options) {
    CheckStatus status = CHECK_NO_ERROR;
    nlohmann::json reports = nlohmann::json::array();
    for (const std::string& path : options.listings) {
        const std::optional<std::string> text = read_listing(path);
        if (!text) {
            std::fprintf(stderr, "quillon-cli: cannot read %s\n", path.c_str());
            status = CHECK_UNREADABLE;
            continue;
        }
        const CheckReport report = check_listing(*text);
        if (report.errors != 0 && status == CHECK_NO_ERROR)
            status = CHECK_ERRORS;
        if (options.json)
            reports.push_back(to_json(path, report));
        else
            print_report(path, report);
    }
    // Names of files may be no UTF-8.
    if (options.json)
        std::printf("%s\n", reports.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    return std::fflush(stdout) == 0 ? status : CHECK_UNREADABLE;
}

} // namespace quillon
