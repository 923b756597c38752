// SPDX-License-Identifier: MIT
// A listing is loaded and run for its first 20,000 ticks while somebody plays with the machine. The input is the
// listing; behind a NUL, which ends a listing, stands what is done.
#include "core/controls.h"
#include "fuzz/user.h"

#include "shell/commands.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int TICKS_MAX = 20'000;
    constexpr int IDLE_TICKS_MAX = 200; // in a row, of a machine that has ended
    std::string_view rest = fuzz::as_text(data, size);
    const std::string_view listing = fuzz::take_until(rest, '\0');
    const auto s = fuzz::make_simulator();
    if (load_listing_text(s->machine, std::string(listing)) == LoadResult::LOADED)
        run_host_command(*s, COMMAND_RUN);
    fuzz::Choices choices(1, rest);
    for (int ticks = 0, idle = 0; ticks < TICKS_MAX && idle < IDLE_TICKS_MAX; ++ticks) {
        if (ticks % 8 == 7)
            act(*s, choices);
        fuzz::tick(*s);
        idle = choices.exhausted() && s->machine.run.run_state >= STATE_ENDED ? idle + 1 : 0;
    }
    return 0;
}
