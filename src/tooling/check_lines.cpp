// SPDX-License-Identifier: MIT
// A line, statement by statement, in the order in which the machine comes to them.
#include "tooling/check_reader.h"

namespace quillon {
namespace {

/// What had been noted at a moment, to be taken back to.
struct Mark {
    std::size_t findings;
    std::size_t errors;
    std::size_t warnings;
    std::size_t steps;
};

Mark mark_of(const CheckedListing& listing) {
    const CheckReport& report = listing.report;
    return {report.findings.size(), report.errors, report.warnings, listing.steps.size()};
}

void take_back(CheckedListing& listing, const Mark& mark) {
    CheckReport& report = listing.report;
    report.findings.resize(mark.findings);
    report.errors = mark.errors;
    report.warnings = mark.warnings;
    listing.steps.resize(mark.steps);
}

/// Where the checking of a line has come to.
struct LineReader {
    CheckedListing& listing;
    int area = 0;
    int line = 0;
    const char* scan = nullptr; ///< the next statement; null at the end
    bool conditional = false;
    const char* rest = nullptr; ///< text behind a whole statement, which the machine takes for the next one
    Mark before_rest{};
};

const CheckedLine& line_of(const LineReader& l) { return line_of(l.listing, l.area, l.line); }

/// Goes on behind the statement that a token ended, or is behind.
void go_on(LineReader& l, const Token& token, const char* behind) {
    if (token.code == TOKEN_COLON) {
        l.scan = behind;
        return;
    }
    bool ended_line = token.code == TOKEN_END;
    l.scan = ended_line ? nullptr : skip_to_statement_end(behind, ended_line);
    if (ended_line)
        l.scan = nullptr;
}

/// The statement is refused. When it was taken from behind a whole one, that is what is wrong.
void leave_refused(LineReader& l, const StatementReader& r) {
    if (l.rest != nullptr) {
        take_back(l.listing, l.before_rest);
        add_finding(l.listing, FindingKind::TEXT_AFTER_STATEMENT, true, line_of(l), l.rest,
                    describe(scan_token(l.rest)) + " behind a whole statement");
        l.rest = nullptr;
    }
    go_on(l, r.scanned, r.scan);
}

/// The machine takes what stands behind a whole statement for the next one.
void leave_rest(LineReader& l, const char* rest, const char* behind) {
    l.before_rest = mark_of(l.listing);
    l.rest = rest;
    add_finding(l.listing, FindingKind::TEXT_AFTER_STATEMENT, false, line_of(l), rest,
                describe(scan_token(rest)) + " behind a whole statement; \":\" is missing");
    l.scan = behind;
}

/// Nothing behind this statement is ever reached: what is there is told, save DATA and remarks.
void leave_line(LineReader& l, const StatementReader& r) {
    l.scan = nullptr;
    if (r.token == TOKEN_END)
        return;
    const char* p = is_statement_end(r.scanned.code) ? r.scan : r.scanned.begin;
    for (Token token = scan_token(p); token.code != TOKEN_END && token.code != TOKEN_REM; token = scan_token(p)) {
        p = token.end;
        bool ended_line = false;
        if (token.code == TOKEN_DATA)
            p = skip_to_statement_end(p, ended_line);
        else if (token.code != TOKEN_COLON)
            return add_finding(l.listing, FindingKind::NEVER_REACHED, false, line_of(l), token.begin,
                               "the program never gets here: it always leaves the line before");
    }
}

/// STOP is itself the token that it ends at.
void leave_stop(LineReader& l, const StatementReader& r) {
    const Token behind = scan_token(r.scan);
    if (is_statement_end(behind.code))
        go_on(l, behind, behind.end);
    else
        leave_rest(l, behind.begin, r.scan);
}

void check_statement(LineReader& l) {
    const Token first = scan_token(l.scan);
    StatementReader r{.listing = l.listing, .area = l.area, .line = l.line, .scan = l.scan};
    r.conditional = l.conditional;
    read_statement(r);
    l.conditional = r.conditional || r.skips_line;
    if (r.failed)
        return leave_refused(l, r);
    l.rest = nullptr;
    if (is_operand_token(first.code) && !r.assigned)
        warn(r, FindingKind::NO_EFFECT, first.begin, "this statement does nothing");
    if (r.leaves_line)
        leave_line(l, r);
    else if (r.rest_taken)
        leave_rest(l, r.scanned.begin, r.scan);
    else if (r.token == TOKEN_END)
        l.scan = nullptr;
    else if (r.token == TOKEN_COLON)
        l.scan = r.scan;
    else if (r.token == TOKEN_STOP && first.code >= STATEMENT_WORD)
        leave_stop(l, r);
    else
        leave_rest(l, r.scanned.begin, r.scan);
    l.listing.areas[static_cast<std::size_t>(l.area)].lines[static_cast<std::size_t>(l.line)].goes_on =
        !r.leaves_line || l.conditional;
}

} // namespace

void check_line(CheckedListing& listing, int area, int line) {
    LineReader l{.listing = listing, .area = area, .line = line, .scan = line_of(listing, area, line).text};
    while (l.scan != nullptr)
        check_statement(l);
}

} // namespace quillon
