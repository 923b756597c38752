// SPDX-License-Identifier: MIT
// How fast the machine's parts are: loading, number conversions, scanning.
#include "core/controls.h"
#include "core/interpreter.h"
#include "core/number_format.h"
#include "shell/simulator.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace quillon {
namespace {

/// A listing of all ten areas with as many lines as fit.
std::string full_listing() {
    std::string text;
    for (int area = 0; area < AREA_COUNT; ++area) {
        text += "[P" + std::to_string(area) + "]\n";
        for (int line = 0; line < LINES_PER_AREA; ++line)
            text += std::to_string(10 * line) + " A=A+1:IF A>100 THEN PRINT \"MORE\";A\n";
    }
    return text;
}

void load_full_listing(benchmark::State& state) {
    const auto simulator = std::make_unique<Simulator>();
    const std::string text = full_listing();
    for (auto _ : state) {
        if (load_listing_text(simulator->machine, text) != LoadResult::LOADED)
            state.SkipWithError("the listing does not load");
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(load_full_listing);

/// Numbers as programs have them: whole, with decimals, large and small.
constexpr double NUMBERS[] = {0, 1, -17, 3.25, 1.0 / 3, 123456.789, 1e10, -2.5e-7, 6.02214076e23, 0.001};

void round_to_six_decimals(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(round6(NUMBERS[i++ % std::size(NUMBERS)]));
}
BENCHMARK(round_to_six_decimals);

void format_a_number(benchmark::State& state) {
    const auto simulator = std::make_unique<Simulator>();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(number_text(simulator->machine, NUMBERS[i++ % std::size(NUMBERS)]));
}
BENCHMARK(format_a_number);

void scan_and_read_a_token(benchmark::State& state) {
    const auto simulator = std::make_unique<Simulator>();
    Machine& m = simulator->machine;
    constexpr int TOKENS = 13;
    for (auto _ : state) {
        set_typed_line(m.entry.typed, "IF A<=12.5 THEN PRINT B$;\"TEXT\":GOSUB 100");
        m.eval.next = TYPED;
        for (int i = 0; i < TOKENS; ++i)
            benchmark::DoNotOptimize(next_token(m));
    }
    state.SetItemsProcessed(state.iterations() * TOKENS);
}
BENCHMARK(scan_and_read_a_token);

} // namespace
} // namespace quillon
