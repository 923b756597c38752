// SPDX-License-Identifier: MIT
// The record at the start, and small changes that several owners make.
#include "core/machine.h"

#include "core/display_line.h"

namespace quillon {

const Surroundings& no_surroundings() {
    static const Language NO_WORDS{};
    static const Surroundings NOTHING{&NO_WORDS, {}, {}};
    return NOTHING;
}

Machine::Machine() {
    clear_display(*this);
    set_typed_line(entry.typed, {});
}

void clear_variables(Machine& m) { m.variables.fill(Variable{}); }

void clear_entry_line(Machine& m) {
    m.entry.entry_line.text.clear();
    m.entry.prev_key_string.clear();
    clear_display_line(m);
}

int line_number(const Machine& m, int line) {
    const auto& lines = current_area(m).lines;
    const auto index = static_cast<std::size_t>(line);
    return index < lines.size() ? lines[index].number : 0;
}

int current_line_number(const Machine& m) { return line_number(m, m.program.cur_line); }

} // namespace quillon
