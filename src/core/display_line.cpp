// Writing into the display line.
#include "core/display_line.h"

#include "core/machine.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

constexpr int WRITE_END = 127; ///< texts end before this column

} // namespace

void clear_display(Machine& m) { std::memset(m.display_line, ' ', DISPLAY_LINE_SIZE); }

void clear_display_line(Machine& m) {
    clear_display(m);
    m.display_cursor = 0;
}

void show_text(Machine& m, std::string_view text) {
    clear_display_line(m);
    std::copy(text.begin(), text.end(), m.display_line);
    m.display_cursor = static_cast<int>(text.size());
    m.display_offset = first_visible_column(m);
}

PutResult put_display_text(Machine& m, int column, std::string_view text) {
    int position = std::max(column, 0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (m.stmt_kind == KIND_PRINT && m.display_cursor == DISPLAY_WIDTH) {
            m.pending_print_text.assign(text.substr(i));
            return PutResult::PENDING;
        }
        if (position >= WRITE_END)
            break;
        m.display_line[position++] = text[i];
        ++m.display_cursor;
        const bool stops_here = m.stmt_kind == KIND_PRINT || m.stmt_kind == KIND_SCROLL;
        if (stops_here && m.display_cursor >= DISPLAY_WIDTH && i + 1 < text.size()) {
            m.pending_print_text.assign(text.substr(i + 1));
            return PutResult::PENDING;
        }
    }
    m.pending_print_text.clear();
    return PutResult::WHOLE;
}

int first_visible_column(const Machine& m) {
    const bool typing = m.run_state == STATE_INPUT || m.run_state == STATE_COMMAND;
    const int width = typing ? DISPLAY_WIDTH - 1 : DISPLAY_WIDTH;
    constexpr int CURSOR_END = 510;
    return m.display_cursor > width && m.display_cursor < CURSOR_END ? m.display_cursor - width : 0;
}

} // namespace quillon
