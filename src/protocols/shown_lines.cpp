// SPDX-License-Identifier: MIT
// Following the display line.
#include "protocols/shown_lines.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::size_t COLUMNS_MAX = 127; ///< texts end before this column of the display line

void start_line(ShownLines& shown) {
    shown.line.clear();
    shown.scrolled = 0;
    shown.extent = 0;
    shown.written = 0;
    shown.rewritten = false;
    shown.stands = false;
}

/// A line that is joined and joined grows without end: of what has scrolled off and been handed on, the end is kept.
void forget_oldest(ShownLines& shown) {
    constexpr std::size_t KEPT = 1024;
    const std::size_t done = std::min(shown.scrolled, shown.written);
    if (done <= KEPT)
        return;
    shown.line.erase(0, done - KEPT);
    shown.scrolled -= done - KEPT;
    shown.written -= done - KEPT;
}

/// Hands on what is new; a rewritten line as a whole, below what was handed on before.
void write_rest(ShownLines& shown) {
    if (shown.rewritten) {
        shown.write("\n");
        shown.written = 0;
        shown.rewritten = false;
    }
    if (shown.written < shown.line.size())
        shown.write(std::string_view(shown.line).substr(shown.written));
    shown.written = shown.line.size();
    forget_oldest(shown);
}

void end_line(ShownLines& shown) {
    write_rest(shown);
    shown.write("\n");
    shown.stands = true;
}

/// Takes over what the display shows now. A text that scrolls in counts as shown from its start.
void update_line(ShownLines& shown, const Machine& m, bool scrolling) {
    const std::string_view display(m.screen.display_line.data(), DISPLAY_LINE_SIZE);
    if (shown.scrolling && !scrolling) { // the last twelve characters have moved to the front
        shown.scrolled = shown.line.size() - std::min<std::size_t>(shown.line.size(), DISPLAY_WIDTH);
        shown.extent = DISPLAY_WIDTH;
    }
    shown.extent = std::max(shown.extent, static_cast<std::size_t>(m.screen.display_cursor));
    std::string end(display.substr(0, shown.extent));
    if (scrolling)
        end += m.run.scroll.pending_print_text.view().substr(0, COLUMNS_MAX - shown.extent);
    const std::size_t handed_on = shown.written - std::min(shown.written, shown.scrolled);
    shown.rewritten = shown.rewritten || end.compare(0, handed_on, shown.line, shown.scrolled, handed_on) != 0;
    shown.line.replace(shown.scrolled, std::string::npos, end);
}

/// A bare PRINT, or a reset, has taken the line away.
bool line_was_dropped(const ShownLines& shown, const Machine& m) {
    if (m.screen.print_clear_pending)
        return true;
    const std::string_view display(m.screen.display_line.data(), DISPLAY_LINE_SIZE);
    return m.screen.display_cursor == 0 && !shown.line.empty() &&
           display.find_last_not_of(' ') == std::string_view::npos;
}

} // namespace

void follow_display(ShownLines& shown, const Machine& m) {
    if (failed(m))
        return; // its text has replaced the line
    const bool scrolling = m.eval.stmt_kind == KIND_SCROLL;
    const bool printing = scrolling || m.eval.stmt_kind == KIND_PRINT;
    const bool idle = !printing && !shown.printing && !shown.stands && m.run.run_state == STATE_RUN;
    if (idle && m.screen.display_cursor == shown.last_cursor)
        return;
    if (shown.stands)
        start_line(shown);
    if (line_was_dropped(shown, m)) {
        if (!shown.line.empty())
            end_line(shown);
        start_line(shown);
    } else {
        update_line(shown, m, scrolling);
        const bool halted = m.run.run_state == STATE_STOPPED && !shown.line.empty();
        if (m.run.run_state == STATE_PRINT_WAIT || halted)
            end_line(shown);
        else if (!printing && !shown.rewritten)
            write_rest(shown);
    }
    shown.printing = printing;
    shown.scrolling = scrolling;
    shown.last_cursor = m.screen.display_cursor;
}

void finish_shown_lines(ShownLines& shown, std::string_view tail) {
    if (!shown.stands && !shown.line.empty()) {
        write_rest(shown);
        shown.write(tail);
        end_line(shown);
    }
    start_line(shown);
}

} // namespace quillon
