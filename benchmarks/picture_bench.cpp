// SPDX-License-Identifier: MIT
// How long the picture takes: an unchanged line, a whole one, and unpacking the skin.
#include "display/glz.h"
#include "display/resources.h"
#include "shell/simulator.h"
#include "shell/skins.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace quillon {
namespace {

void render_unchanged(benchmark::State& state) {
    const auto simulator = std::make_unique<Simulator>();
    load_skin(*simulator, {});
    render_lcd(simulator->lcd, simulator->machine);
    for (auto _ : state)
        benchmark::DoNotOptimize(render_lcd(simulator->lcd, simulator->machine));
}
BENCHMARK(render_unchanged);

/// Every cell and every indicator changes each time.
void render_everything(benchmark::State& state) {
    const auto simulator = std::make_unique<Simulator>();
    Machine& m = simulator->machine;
    load_skin(*simulator, {});
    for (auto _ : state) {
        std::memset(m.screen.display_line.data(), m.screen.display_line[0] == 'A' ? 'B' : 'A', DISPLAY_WIDTH);
        m.keys.shift_flag = !m.keys.shift_flag;
        benchmark::DoNotOptimize(render_lcd(simulator->lcd, m));
    }
}
BENCHMARK(render_everything)->Unit(benchmark::kMicrosecond);

void decode_skin(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(decode_image_resource(image_resource(SKIN_IMAGE)));
}
BENCHMARK(decode_skin)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillon
