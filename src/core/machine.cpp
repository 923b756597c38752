// Resets of the machine's record.
#include "core/machine.h"

#include "core/display_line.h"

#include <cstdio>

namespace quillon {

Machine::Machine() {
    init_variables(*this);
    clear_display(*this);
    display_line[DISPLAY_LINE_SIZE] = '\0';
}

void init_variables(Machine& m) {
    constexpr int LETTER_COUNT = 26;
    for (int i = 0; i < CELL_COUNT; ++i) {
        char name[8];
        if (i < LETTER_COUNT)
            std::snprintf(name, sizeof name, "%c", 'A' + i);
        else
            std::snprintf(name, sizeof name, "%d", i - LETTER_COUNT + 1);
        m.variables[static_cast<std::size_t>(i)].name = name;
    }
    clear_variables(m);
}

void clear_variables(Machine& m) {
    for (Variable& cell : m.variables) {
        cell.kind = -1;
        cell.string_flag = 0;
        cell.number = 0;
        cell.text.clear();
    }
}

void clear_program_areas(Machine& m) {
    m.error_code = ERROR_NONE;
    m.random_seed = m.host.milliseconds();
    for (ProgramArea& area : m.areas)
        area = ProgramArea{};
}

void clear_stacks(Machine& m) {
    m.for_depth = 0;
    m.gosub_depth = 0;
    for (ForFrame& frame : m.for_frames)
        frame = ForFrame{};
    for (GosubFrame& frame : m.gosub_frames)
        frame = GosubFrame{};
}

void clear_run_marks(Machine& m) {
    m.program_ended = 0;
    m.saved_token = 0;
    m.saved_stmt_kind = KIND_NONE;
    m.state_after_scroll = STATE_RUN;
    m.kind_after_scroll = KIND_NONE;
    m.wait_counter = 0;
    m.print_clear_pending = 0;
    m.typed_wait = 0;
    m.stopped_kind = KIND_NONE;
    m.stopped_token = 0;
}

void reset_machine(Machine& m) {
    m.error_code = ERROR_NONE;
    clear_display(m);
    m.display_cursor = 0;
    m.display_offset = 0;
    m.prev_state = STATE_RUN;
    m.run_state = STATE_SELECT;
    m.cur_area = 0;
    m.cur_line = 0;
    m.stmt_start = nullptr;
    m.token_start = NO_TEXT;
    m.print_mode = 0;
    clear_stacks(m);
    clear_run_marks(m);
}

void enter_state(Machine& m, int state) {
    m.prev_state = m.run_state;
    m.run_state = state;
}

void save_stop(Machine& m) {
    m.saved_token = m.token;
    m.saved_stmt_kind = m.stmt_kind;
    m.saved_value = m.value;
}

void clear_entry_line(Machine& m) {
    m.entry_line.text.clear();
    m.prev_key_string.clear();
    clear_display_line(m);
}

void clear_key(Machine& m) {
    m.key_string.clear();
    m.held_key = 0;
}

int line_number(const Machine& m, int line) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    return line >= 0 && line < area.line_count ? area.lines[static_cast<std::size_t>(line)].number : 0;
}

int current_line_number(const Machine& m) { return line_number(m, m.cur_line); }

} // namespace quillon
