// SPDX-License-Identifier: MIT
// Describing the LCD.
#include "shell/lcd_text.h"

#include "core/charset.h"
#include "core/program.h"
#include "shell/simulator.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr int AREAS_COLUMN = 2; ///< of the first program area's mark

/// The display line from its first visible column on, as it is in that phase of the blinking in which nothing is hidden
/// and no cursor shown.
std::string steady_line(const Machine& m) {
    const auto offset = static_cast<std::size_t>(m.screen.display_offset);
    std::string line(m.screen.display_line.data() + offset, DISPLAY_WIDTH);
    if (m.run.run_state == STATE_SELECT) {
        for (int area = 0; area < AREA_COUNT; ++area)
            line[AREAS_COLUMN + static_cast<std::size_t>(area)] = area_mark(m, area);
    } else if (is_typing(m)) {
        std::string_view entry = m.entry.entry_line.text;
        entry.remove_prefix(std::min(offset, entry.size()));
        line.assign(DISPLAY_WIDTH, ' ');
        line.replace(0, std::min(entry.size(), line.size()), entry.substr(0, line.size()));
    }
    return line;
}

} // namespace

std::string lcd_text(const Simulator& s) { return to_unicode(steady_line(s.machine)); }

std::string lcd_indicator_text(const Simulator& s) {
    std::string text;
    for (const std::string_view name : lit_indicators(s.lcd)) {
        text += text.empty() ? "" : " ";
        text += name;
    }
    return text;
}

} // namespace quillon
