// SPDX-License-Identifier: MIT
// How programs end and what they print.
#include "tests/support/outcomes.h"

#include "tests/support/evaluation.h"

namespace quillon::testing {

std::string failure_of(const TestMachine& t) {
    if (!failed(t.m) && t.detail_id().empty())
        return "ok";
    return (!failed(t.m) ? "ended" : t.display()) + " " + t.detail_id() + t.detail();
}

std::string printed(TestMachine& t, std::string_view setup, std::string_view expression) {
    t.start("VAC:MODE 4:SET N\n" + std::string(setup) + (setup.empty() ? "" : "\n") + "PRINT " +
            std::string(expression));
    for (int i = 0; i < 2000 && t.m.run.run_state == STATE_RUN && t.m.eval.stmt_kind != KIND_SCROLL; ++i)
        t.tick();
    if (failed(t.m))
        return failure_of(t.m);
    std::string shown(t.m.screen.display_line.data(), static_cast<std::size_t>(t.m.screen.display_cursor));
    shown += t.m.run.scroll.pending_print_text.view(); // what has yet to scroll in
    return escaped(std::string_view(shown).substr(shown.starts_with(' ') ? 1 : 0));
}

} // namespace quillon::testing
