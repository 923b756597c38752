// Tables of what holds between ticks: whole numbers by their ranges, everything else by a condition.
#include "core/invariants.h"

#include "core/machine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>

namespace quillon {
namespace {

constexpr int ANY_COUNT = std::numeric_limits<int>::max();

struct FieldRange {
    const char* name;
    int Machine::*field;
    int lowest;
    int highest;
};

// clang-format off
constexpr FieldRange RANGES[] = {
    {"run_state",          &Machine::run_state,          STATE_RUN, STATE_TO_COMMAND},
    {"prev_state",         &Machine::prev_state,         STATE_RUN, STATE_TO_COMMAND},
    {"saved_run_state",    &Machine::saved_run_state,    STATE_RUN, STATE_TO_COMMAND},
    {"state_after_scroll", &Machine::state_after_scroll, STATE_RUN, STATE_TO_COMMAND},
    {"cur_area",           &Machine::cur_area,           0,  AREA_COUNT - 1},
    {"run_page",           &Machine::run_page,           0,  AREA_COUNT - 1},
    {"program_ended",      &Machine::program_ended,      0,  1},
    {"for_depth",          &Machine::for_depth,          0,  FOR_DEPTH_MAX},
    {"gosub_depth",        &Machine::gosub_depth,        0,  GOSUB_DEPTH_MAX},
    {"nesting_depth",      &Machine::nesting_depth,      0,  0}, // nothing is being evaluated
    {"data_pos",           &Machine::data_pos,           0,  DATA_INDEX_SIZE},
    {"display_cursor",     &Machine::display_cursor,     0,  127},
    {"display_offset",     &Machine::display_offset,     0,  DISPLAY_LINE_SIZE - DISPLAY_WIDTH},
    {"wait_counter",       &Machine::wait_counter,       0,  ANY_COUNT},
    {"blink_counter",      &Machine::blink_counter,      0,  ANY_COUNT},
    {"cursor_visible",     &Machine::cursor_visible,     0,  1},
    {"enter_request",      &Machine::enter_request,      0,  1},
    {"held_key",           &Machine::held_key,           0,  ANY_COUNT},
    {"soft_key_code",      &Machine::soft_key_code,      0,  255},
    {"soft_pressed_key",   &Machine::soft_pressed_key,   -1, 55},
    {"soft_highlight",     &Machine::soft_highlight,     -1, 55},
    {"soft_held_kind",     &Machine::soft_held_kind,     0,  9},
    {"soft_shift_latch",   &Machine::soft_shift_latch,   0,  1},
    {"soft_alt_latch",     &Machine::soft_alt_latch,     0,  1},
    {"soft_ctrl_latch",    &Machine::soft_ctrl_latch,    0,  1},
    {"history_index",      &Machine::history_index,      -1, HISTORY_SIZE - 1},
    {"sound_ticks_left",   &Machine::sound_ticks_left,   0,  ANY_COUNT},
    {"sound_holds_run",    &Machine::sound_holds_run,    0,  1},
    {"trace_mode",         &Machine::trace_mode,         0,  1},
    {"angle_unit",         &Machine::angle_unit,         ANGLE_DEG, ANGLE_GRA},
    {"print_mode",         &Machine::print_mode,         0,  1},
    {"set_e_digits",       &Machine::set_e_digits,       -1, 99},
    {"set_f_digits",       &Machine::set_f_digits,       -1, 99},
    {"set_g_digits",       &Machine::set_g_digits,       0,  99},
    {"timer_interval",     &Machine::timer_interval,     1,  1000},
    {"zoom",               &Machine::zoom,               1,  12},
    {"overdrive",          &Machine::overdrive,          0,  1},
};
// clang-format on

bool is_statement_kind(int kind) {
    constexpr int KINDS[] = {KIND_NONE,        KIND_CONDITION,    KIND_JUMP,    KIND_PRINT,
                             KIND_FOR,         KIND_INPUT,        KIND_SCROLL,  KIND_PROMPT,
                             KIND_INPUT_ERROR, KIND_PROMPT_AGAIN, KIND_CLEARED, KIND_RESULT};
    return std::find(std::begin(KINDS), std::end(KINDS), kind) != std::end(KINDS);
}

/// Whether a position lies in a text of `size` bytes, or at its end.
bool lies_in(const char* position, const char* text, std::size_t size) {
    return std::less_equal<>()(text, position) && std::less_equal<>()(position, text + size);
}

/// A position that an INPUT has typed over still lies in the buffer: nothing goes on from there.
bool is_alive(const Machine& m, const char* position) {
    return position == NO_TEXT || lies_in(position, m.listing_text.data(), m.listing_text.size()) ||
           lies_in(position, m.command_buffer.c_str(), m.command_buffer.capacity());
}

bool is_cell(const Machine& m, const Variable* variable) {
    return variable == nullptr || (std::less_equal<>()(m.variables.data(), variable) &&
                                   std::less<>()(variable, m.variables.data() + m.variables.size()));
}

/// An operand that is a variable has its cell.
bool is_operand(const Machine& m, const Value& value) {
    const bool needs_cell = value.kind == VALUE_NUMVAR || value.kind == VALUE_STRVAR;
    return is_cell(m, value.variable) && (value.variable != nullptr || !needs_cell);
}

template <std::size_t Capacity>
bool ends(const BoundedText<Capacity>& text) {
    return text.c_str()[text.size()] == '\0';
}

template <typename Texts>
bool all_end(const Texts& texts) {
    return std::all_of(texts.begin(), texts.end(), [](const auto& text) { return ends(text); });
}

bool frames_are_alive(const Machine& m) {
    return std::all_of(m.for_frames, m.for_frames + m.for_depth,
                       [&m](const ForFrame& frame) {
                           return frame.variable != nullptr && is_cell(m, frame.variable) && is_alive(m, frame.text);
                       }) &&
           std::all_of(m.gosub_frames, m.gosub_frames + m.gosub_depth,
                       [&m](const GosubFrame& frame) { return is_alive(m, frame.text); });
}

bool line_exists(const Machine& m) {
    const ProgramArea& area = m.areas[static_cast<std::size_t>(m.cur_area)];
    if (area.line_count < 0 || area.line_count > LINES_PER_AREA || m.cur_line < 0 || m.cur_line > area.line_count)
        return false;
    return m.cur_line == area.line_count || is_alive(m, area.lines[static_cast<std::size_t>(m.cur_line)].text);
}

bool is_error_code(int code) {
    return code == ERROR_NONE || code == ERROR_INPUT || (code >= ERROR_NESTING && code <= ERROR_SYNTAX);
}

bool cells_are_whole(const Machine& m) {
    return std::all_of(m.variables.begin(), m.variables.end(), [](const Variable& cell) {
        return cell.kind >= -1 && cell.kind <= 1 && ends(cell.name) && ends(cell.text);
    });
}

/// An INPUT that asks knows for which cell.
bool entry_has_target(const Machine& m) {
    const bool asks = m.run_state == STATE_INPUT || (m.run_state == STATE_RUN && m.stmt_kind == KIND_PROMPT);
    return is_operand(m, m.entry_line) && (!asks || m.entry_line.variable != nullptr);
}

struct Condition {
    const char* name;
    bool (*holds)(const Machine& m);
};

// clang-format off
constexpr Condition CONDITIONS[] = {
    {"stmt_kind",         [](const Machine& m) { return is_statement_kind(m.stmt_kind); }},
    {"saved_stmt_kind",   [](const Machine& m) { return is_statement_kind(m.saved_stmt_kind); }},
    {"kind_after_scroll", [](const Machine& m) { return is_statement_kind(m.kind_after_scroll); }},
    {"stopped_kind",      [](const Machine& m) { return is_statement_kind(m.stopped_kind); }},
    {"base_state",        [](const Machine& m) { return m.base_state == STATE_RUN || m.base_state == STATE_COMMAND; }},
    {"error_code",        [](const Machine& m) { return is_error_code(m.error_code); }},
    {"cur_line",          line_exists},
    {"stmt_start",        [](const Machine& m) { return m.stmt_start == nullptr || is_alive(m, m.stmt_start); }},
    {"scan_ptr",          [](const Machine& m) { return is_alive(m, m.scan_ptr); }},
    {"token_start",       [](const Machine& m) { return is_alive(m, m.token_start); }},
    {"saved_scan_ptr",    [](const Machine& m) { return is_alive(m, m.saved_scan_ptr); }},
    {"for_frames, gosub_frames", frames_are_alive},
    {"value",             [](const Machine& m) { return is_operand(m, m.value) && ends(m.value.text); }},
    {"entry_line",        [](const Machine& m) { return entry_has_target(m) && ends(m.entry_line.text); }},
    {"variables",         cells_are_whole},
    {"display_line",      [](const Machine& m) { return m.display_line[DISPLAY_LINE_SIZE] == '\0'; }},
    {"pending_print_text", [](const Machine& m) { return ends(m.pending_print_text); }},
    {"command_buffer",    [](const Machine& m) { return ends(m.command_buffer); }},
    {"key_string",        [](const Machine& m) { return ends(m.key_string) && ends(m.prev_key_string); }},
    {"history",           [](const Machine& m) { return all_end(m.history); }},
    {"error_detail",      [](const Machine& m) { return ends(m.error_detail) && ends(m.system_message); }},
    {"tone",              [](const Machine& m) { return m.tone.samples >= 0 && m.tone.samples <= TONE_SAMPLES_MAX; }},
};
// clang-format on

} // namespace

const char* check_invariants(const Machine& m) {
    for (const FieldRange& range : RANGES) {
        if (m.*range.field < range.lowest || m.*range.field > range.highest)
            return range.name;
    }
    for (const Condition& condition : CONDITIONS) {
        if (!condition.holds(m))
            return condition.name;
    }
    return nullptr;
}

void require_invariants(const Machine& m) {
    const char* broken = check_invariants(m);
    if (broken == nullptr)
        return;
    std::fprintf(stderr, "quillon: the machine is broken: %s\n", broken);
    std::abort();
}

} // namespace quillon
