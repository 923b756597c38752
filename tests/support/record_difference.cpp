// Comparing two records.
#include "tests/support/record_difference.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillon::testing {
namespace {

struct IntField {
    const char* name;
    int Machine::*field;
};

// clang-format off
#define FIELD(name) {#name, &Machine::name}
constexpr IntField INT_FIELDS[] = {
    FIELD(token), FIELD(prev_token), FIELD(error_code), FIELD(run_state), FIELD(prev_state), FIELD(base_state),
    FIELD(saved_run_state), FIELD(cur_area), FIELD(cur_line), FIELD(run_page), FIELD(program_ended), FIELD(for_depth),
    FIELD(gosub_depth), FIELD(stmt_kind), FIELD(saved_token), FIELD(saved_stmt_kind), FIELD(operand_done),
    FIELD(nesting_depth), FIELD(data_pos), FIELD(display_cursor), FIELD(display_offset), FIELD(print_clear_pending),
    FIELD(wait_counter), FIELD(state_after_scroll), FIELD(kind_after_scroll), FIELD(cursor_visible),
    FIELD(blink_counter), FIELD(held_key), FIELD(soft_key_code), FIELD(enter_request), FIELD(history_index),
    FIELD(typed_wait), FIELD(stopped_token), FIELD(stopped_kind), FIELD(trace_mode), FIELD(trace_step_flag),
    FIELD(sound_ticks_left), FIELD(sound_holds_run), FIELD(angle_unit), FIELD(print_mode), FIELD(set_e_digits),
    FIELD(set_f_digits), FIELD(set_g_digits), FIELD(beep_volume), FIELD(overdrive),
};
#undef FIELD
// clang-format on

/// A position as the text it lies in and the place there.
std::string place_of(const Machine& m, const char* position) {
    if (position == nullptr)
        return "null";
    const char* listing = m.listing_text.data();
    const char* typed = m.command_buffer.c_str();
    if (position >= listing && position <= listing + m.listing_text.size())
        return "listing " + std::to_string(position - listing);
    if (position >= typed && position <= typed + m.command_buffer.capacity())
        return "typed " + std::to_string(position - typed);
    return *position == '\0' ? "empty" : "elsewhere";
}

std::string cell_name(const Machine& m, const Variable* cell) {
    return cell != nullptr ? std::to_string(cell - m.variables.data()) : "none";
}

/// Bit by bit, so that the zeros differ and not-a-numbers do not.
std::string number_text(double x) {
    return std::to_string(std::bit_cast<std::uint64_t>(x)) + " (" + std::to_string(x) + ")";
}

/// A value but for what its kind makes meaningless.
std::string value_text(const Machine& m, const Value& value) {
    return std::to_string(value.kind) + " " + cell_name(m, value.variable) + " " + number_text(value.number) + " " +
           std::to_string(value.complete) + " " + std::string(value.text.view());
}

std::string frames_text(const Machine& m) {
    std::string text;
    for (int i = 0; i < m.for_depth; ++i) {
        const ForFrame& frame = m.for_frames[i];
        text += "for " + cell_name(m, frame.variable) + " " + number_text(frame.step) + " " + number_text(frame.limit) +
                " " + std::to_string(frame.line) + " " + std::to_string(frame.area) + " " + place_of(m, frame.text);
    }
    for (int i = 0; i < m.gosub_depth; ++i) {
        const GosubFrame& frame = m.gosub_frames[i];
        text +=
            "gosub " + std::to_string(frame.line) + " " + std::to_string(frame.area) + " " + place_of(m, frame.text);
    }
    return text;
}

std::string position_text(const Machine& m) {
    return place_of(m, m.stmt_start) + ", " + place_of(m, m.scan_ptr) + ", " + place_of(m, m.token_start) + ", " +
           place_of(m, m.saved_scan_ptr);
}

bool same_cell(const Variable& a, const Variable& b) {
    return a.kind == b.kind && a.string_flag == b.string_flag && a.text.view() == b.text.view() &&
           std::bit_cast<std::uint64_t>(a.number) == std::bit_cast<std::uint64_t>(b.number);
}

std::string cells_difference(const Machine& a, const Machine& b) {
    for (std::size_t i = 0; i < a.variables.size(); ++i) {
        if (!same_cell(a.variables[i], b.variables[i]))
            return "cell " + std::to_string(i) + ": " + number_text(a.variables[i].number) + " and " +
                   number_text(b.variables[i].number);
    }
    return {};
}

std::string text_difference(const char* name, std::string_view a, std::string_view b) {
    return a == b ? std::string() : name + (": " + std::string(a)) + " and " + std::string(b);
}

std::string texts_difference(const Machine& a, const Machine& b) {
    const std::string differences[] = {
        text_difference("positions", position_text(a), position_text(b)),
        text_difference("value", value_text(a, a.value), value_text(b, b.value)),
        text_difference("entry", value_text(a, a.entry_line), value_text(b, b.entry_line)),
        text_difference("frames", frames_text(a), frames_text(b)),
        text_difference("last result", number_text(a.last_result), number_text(b.last_result)),
        text_difference("random seed", std::to_string(a.random_seed), std::to_string(b.random_seed)),
        text_difference("display", {a.display_line, sizeof a.display_line}, {b.display_line, sizeof b.display_line}),
        text_difference("pending text", a.pending_print_text, b.pending_print_text),
        text_difference("detail", a.error_detail, b.error_detail),
        text_difference("system message", a.system_message, b.system_message),
        text_difference("key", a.key_string, b.key_string),
    };
    const auto* found =
        std::find_if(std::begin(differences), std::end(differences), [](const auto& text) { return !text.empty(); });
    return found != std::end(differences) ? *found : std::string();
}

} // namespace

std::string record_difference(const Machine& a, const Machine& b) {
    for (const IntField& field : INT_FIELDS) {
        if (a.*field.field != b.*field.field)
            return std::string(field.name) + ": " + std::to_string(a.*field.field) + " and " +
                   std::to_string(b.*field.field);
    }
    const std::string cells = cells_difference(a, b);
    return cells.empty() ? texts_difference(a, b) : cells;
}

} // namespace quillon::testing
