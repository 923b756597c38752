// SPDX-License-Identifier: MIT
// Listings composed from a grammar by the input's bytes: they end what is checked, which is found alike each time, and
// the checker refuses a listing exactly when the machine does not load it.
#include "core/controls.h"
#include "fuzz/random_programs.h"
#include "fuzz/user.h"

#include "tooling/check.h"

using namespace quillon;

namespace {

bool same_findings(const CheckReport& a, const CheckReport& b) {
    const auto same = [](const Finding& x, const Finding& y) {
        return x.kind == y.kind && x.line == y.line && x.column == y.column && x.text == y.text;
    };
    return std::equal(a.findings.begin(), a.findings.end(), b.findings.begin(), b.findings.end(), same);
}

bool cannot_load(const CheckReport& report) {
    return std::any_of(report.findings.begin(), report.findings.end(),
                       [](const Finding& f) { return is_load_fault(f.kind); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Choices choices(1, fuzz::as_text(data, size));
    fuzz::RandomProgram random([&choices](int count) { return choices.below(count); });
    const std::string listing = random.faulty_listing();
    const CheckReport report = check_listing(listing);
    fuzz::require(same_findings(report, check_listing(listing)), "the same listing is checked in two ways");
    const auto s = fuzz::make_simulator();
    const bool loaded = load_listing_text(s->machine, listing) == LoadResult::LOADED;
    fuzz::require(loaded != cannot_load(report), "the checker and the machine disagree about a listing");
    const std::string message(s->machine.error.system_message);
    const bool again = load_listing_text(s->machine, listing) == LoadResult::LOADED;
    fuzz::require(loaded == again && message == std::string_view(s->machine.error.system_message),
                  "the same listing loads in two ways");
    return 0;
}
