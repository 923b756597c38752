// Comparing two records.
#include "tests/support/record_difference.h"

#include "core/numbers.h"

#include <type_traits>

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

/// Bit by bit, so that the zeros differ and not-a-numbers do not.
std::string number_text(double x) { return std::to_string(bits_of(x)) + " (" + std::to_string(x) + ")"; }

std::string cell_name(const Machine& m, const Variable* cell) {
    return cell != nullptr ? std::to_string(cell - m.variables.data()) : "none";
}

/// Words with blanks between them.
template <typename... Words>
std::string joined(const Words&... words) {
    std::string text;
    const auto add = [&text](const auto& word) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(word)>>)
            text += std::to_string(word);
        else
            text += word;
        text += ' ';
    };
    (add(words), ...);
    return text;
}

/// A value but for what its kind makes meaningless.
std::string value_text(const Machine& m, const Value& value) {
    return joined(value.kind, cell_name(m, value.variable), number_text(value.number), value.complete,
                  value.text.view());
}

std::string frames_text(const Machine& m) {
    std::string text;
    for (int i = 0; i < m.for_depth; ++i) {
        const ForFrame& frame = m.for_frames[i];
        text += joined("for", cell_name(m, frame.variable), number_text(frame.step), number_text(frame.limit),
                       frame.line, frame.area, place_of(m, frame.text));
    }
    for (int i = 0; i < m.gosub_depth; ++i) {
        const GosubFrame& frame = m.gosub_frames[i];
        text += joined("gosub", frame.line, frame.area, place_of(m, frame.text));
    }
    return text;
}

struct TextField {
    const char* name;
    std::string (*text)(const Machine& m);
};

// clang-format off
constexpr TextField TEXT_FIELDS[] = {
    {"positions", [](const Machine& m) { return joined(place_of(m, m.stmt_start), place_of(m, m.scan_ptr),
                                                       place_of(m, m.token_start), place_of(m, m.saved_scan_ptr)); }},
    {"value",     [](const Machine& m) { return value_text(m, m.value); }},
    {"entry",     [](const Machine& m) { return value_text(m, m.entry_line); }},
    {"frames",    frames_text},
    {"numbers",   [](const Machine& m) { return joined(number_text(m.last_result), m.random_seed); }},
    {"display",   [](const Machine& m) { return std::string(m.display_line, sizeof m.display_line); }},
    {"texts",     [](const Machine& m) { return joined(m.pending_print_text.view(), m.error_detail.view(),
                                                       m.system_message.c_str(), m.key_string.view()); }},
};
// clang-format on

bool same_cell(const Variable& a, const Variable& b) {
    return a.kind == b.kind && a.string_flag == b.string_flag && a.text.view() == b.text.view() &&
           bits_of(a.number) == bits_of(b.number);
}

} // namespace

std::string record_difference(const Machine& a, const Machine& b) {
    for (const IntField& field : INT_FIELDS) {
        if (a.*field.field != b.*field.field)
            return joined(field.name, a.*field.field, "and", b.*field.field);
    }
    for (std::size_t i = 0; i < a.variables.size(); ++i) {
        if (!same_cell(a.variables[i], b.variables[i]))
            return joined("cell", i, number_text(a.variables[i].number), "and", number_text(b.variables[i].number));
    }
    for (const TextField& field : TEXT_FIELDS) {
        if (field.text(a) != field.text(b))
            return joined(field.name, field.text(a), "and", field.text(b));
    }
    return {};
}

} // namespace quillon::testing
