// SPDX-License-Identifier: MIT
// Writing into the display line.
#include "core/display_line.h"

#include "core/machine.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr int WRITE_END = 127; ///< texts end before this column

} // namespace

void clear_display(Machine& m) { m.screen.display_line.fill(' '); }

void clear_display_line(Machine& m) {
    clear_display(m);
    m.screen.display_cursor = 0;
}

void show_text(Machine& m, std::string_view text) {
    clear_display_line(m);
    std::copy(text.begin(), text.end(), m.screen.display_line.begin());
    m.screen.display_cursor = static_cast<int>(text.size());
    m.screen.display_offset = first_visible_column(m);
}

PutResult put_display_text(Machine& m, int column, std::string_view text) {
    int position = std::max(column, 0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (m.eval.stmt_kind == KIND_PRINT && m.screen.display_cursor == DISPLAY_WIDTH) {
            m.run.scroll.pending_print_text.assign(text.substr(i));
            return PutResult::PENDING;
        }
        if (position >= WRITE_END)
            break;
        m.screen.display_line[static_cast<std::size_t>(position++)] = text[i];
        ++m.screen.display_cursor;
        const bool stops_here = m.eval.stmt_kind == KIND_PRINT || m.eval.stmt_kind == KIND_SCROLL;
        if (stops_here && m.screen.display_cursor >= DISPLAY_WIDTH && i + 1 < text.size()) {
            m.run.scroll.pending_print_text.assign(text.substr(i + 1));
            return PutResult::PENDING;
        }
    }
    m.run.scroll.pending_print_text.clear();
    return PutResult::WHOLE;
}

int first_visible_column(const Machine& m) {
    const bool typing = m.run.run_state == STATE_INPUT || m.run.run_state == STATE_COMMAND;
    const int width = typing ? DISPLAY_WIDTH - 1 : DISPLAY_WIDTH;
    constexpr int CURSOR_END = 510;
    return m.screen.display_cursor > width && m.screen.display_cursor < CURSOR_END ? m.screen.display_cursor - width
                                                                                   : 0;
}

} // namespace quillon
