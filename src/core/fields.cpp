// SPDX-License-Identifier: MIT
// The table of fields.
#include "core/fields.h"

#include "core/setting_ranges.h"
#include "core/variables.h"

#include <limits>

namespace quillon {
namespace {

constexpr long long ANY = std::numeric_limits<int>::max();
constexpr long long SEED_MAX = std::numeric_limits<std::uint32_t>::max();
constexpr long long POSITION_MAX = TYPED + 127;

constexpr unsigned SHOWN = FIELD_SHOWN;
constexpr unsigned SETTABLE = FIELD_SHOWN | FIELD_SETTABLE;
constexpr unsigned HIDDEN = 0;
constexpr unsigned RESET = FIELD_RESET;

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the name is that of the member
#define FIELD(part, field, lowest, highest, uses)                                                                      \
    {                                                                                                                  \
#field, [](const Machine& m) { return static_cast<long long>(m.part.field); },                                    \
     [](Machine& m, long long number) { m.part.field = static_cast<decltype(m.part.field)>(number); },                 \
     lowest, highest, uses    \
    }

// A setting, whose range is its row's in settings.def.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): likewise
#define SETTING(field, uses)                                                                                           \
    FIELD(settings, field, SettingRanges::field.lowest, SettingRanges::field.highest, (uses) | FIELD_SETTING)

// clang-format off
constexpr Field FIELDS[] = {
    //    part      field                lowest highest             uses
    FIELD(run,      run_state,                0,  9,                SHOWN),
    FIELD(run,      prev_state,               0,  9,                SHOWN | RESET),
    FIELD(run,      base_state,               0,  6,                SHOWN),
    FIELD(run,      program_ended,            0,  1,                SHOWN | RESET),
    FIELD(run.scroll, state_after_scroll,      0,  9,                SHOWN | RESET),
    FIELD(run.scroll, kind_after_scroll,       0, 17,                SHOWN | RESET),
    FIELD(run,      saved_run_state,          0,  9,                SHOWN),
    FIELD(eval,     stmt_kind,                0, 17,                SHOWN),
    FIELD(run.resume, saved_stmt_kind,         0, 17,                SHOWN | RESET),
    FIELD(eval,     token,                  -15, 559,               SHOWN),
    FIELD(run.resume, saved_token,           -15, 559,               SHOWN | RESET),
    FIELD(program,  cur_area,                 0, AREA_COUNT - 1,    SHOWN | RESET),
    FIELD(program,  cur_line,                 0, LINES_PER_AREA,    SHOWN | RESET),
    SETTING(run_page,                           SETTABLE),
    FIELD(screen,   display_cursor,           0, 127,               SHOWN | RESET),
    FIELD(screen,   display_offset,           0, DISPLAY_LINE_SIZE - DISPLAY_WIDTH, SHOWN | RESET),
    FIELD(run.scroll, wait_counter,            0, ANY,               SHOWN | RESET),
    FIELD(error,    error_code,             -16, 0,                 SHOWN | RESET),
    SETTING(angle_unit,                         SETTABLE),
    FIELD(screen,   print_mode,               0, 1,                 SHOWN | RESET),
    FIELD(program,  for_depth,                0, FOR_DEPTH_MAX,     SHOWN | RESET),
    FIELD(program,  gosub_depth,              0, GOSUB_DEPTH_MAX,   SHOWN | RESET),
    FIELD(program,  data_pos,                 0, DATA_INDEX_SIZE,   SHOWN),
    FIELD(entry,    history_index,           -1, HISTORY_SIZE - 1,  SHOWN),
    FIELD(sound,    sound_ticks_left,         0, ANY,               SHOWN),
    FIELD(sound,    sound_holds_run,          0, 1,                 SHOWN),
    FIELD(screen,   cursor_visible,           0, 1,                 SHOWN),
    FIELD(screen,   blink_counter,            0, ANY,               SHOWN),
    FIELD(eval,     operand_done,             0, 1,                 SHOWN),
    FIELD(keys,     enter_request,            0, 1,                 SHOWN),
    SETTING(set_e_digits,                       SETTABLE),
    SETTING(set_f_digits,                       SETTABLE),
    SETTING(set_g_digits,                       SETTABLE),
    FIELD(trace,    trace_mode,               0, 1,                 SHOWN),
    SETTING(ascii_mode,                         SETTABLE),
    SETTING(timer_interval,                     SETTABLE),
    FIELD(speed,    overdrive,                0, 1,                 SHOWN),
    SETTING(zoom,                               SHOWN),
    FIELD(keys,     held_key,                 0, ANY,               SHOWN),
    FIELD(soft,     soft_key_code,            0, 255,               SHOWN),
    FIELD(soft,     soft_shift_latch,         0, 1,                 SHOWN),
    FIELD(soft,     soft_alt_latch,           0, 1,                 SHOWN),
    FIELD(soft,     soft_ctrl_latch,          0, 1,                 SHOWN),

    SETTING(wait_print_sc,                      FIELD_SETTABLE),
    SETTING(wait_print_sc_ini,                  FIELD_SETTABLE),
    SETTING(cursor_interval,                    FIELD_SETTABLE),
    SETTING(pcm_beep,                           FIELD_SETTABLE),
    SETTING(beep_volume,                        FIELD_SETTABLE),
    FIELD(speed,    saved_timer_interval,     SettingRanges::timer_interval.lowest, SettingRanges::timer_interval.highest, FIELD_ADJUSTED),
    FIELD(run,      typed_wait,               0, 1,                 RESET),
    FIELD(eval,     prev_token,             -15, 559,               HIDDEN),
    FIELD(run,      item_printed,             0, 1,                 HIDDEN),
    FIELD(program,  stmt_start,         NOWHERE, POSITION_MAX,      RESET),
    FIELD(eval,     next,                     0, POSITION_MAX,      HIDDEN),
    FIELD(eval,     token_start,        NOWHERE, POSITION_MAX,      RESET),
    FIELD(eval,     nesting_depth,            0, 0,                 HIDDEN), // nothing is being evaluated
    FIELD(entry,    saved_next,               0, POSITION_MAX,      HIDDEN),
    FIELD(screen,   print_clear_pending,      0, 1,                 RESET),
    FIELD(keys,     ctrl_flag,                0, 1,                 HIDDEN),
    FIELD(keys,     shift_flag,               0, 1,                 HIDDEN),
    FIELD(keys,     alt_flag,                 0, 1,                 HIDDEN),
    FIELD(soft,     soft_open,                0, 1,                 HIDDEN),
    FIELD(soft,     soft_pressed_key,        -1, 55,                HIDDEN),
    FIELD(soft,     soft_held_kind,           0, 9,                 HIDDEN),
    FIELD(soft,     soft_mouse_down,          0, 1,                 HIDDEN),
    FIELD(soft,     soft_mouse_up,            0, 1,                 HIDDEN),
    FIELD(soft,     soft_repeat_count,        0, ANY,               HIDDEN),
    FIELD(soft,     soft_highlight,          -1, 55,                HIDDEN),
    FIELD(trace,    trace_step_flag,          0, 1,                 HIDDEN),
    FIELD(trace,    trace_step_request,       0, 1,                 HIDDEN),
    {"random_seed", [](const Machine& m) { return static_cast<long long>(m.random_seed); },
     [](Machine& m, long long seed) { m.random_seed = static_cast<std::uint32_t>(seed); }, 0, SEED_MAX, FIELD_SETTABLE | FIELD_SETTING},
};
// clang-format on
#undef SETTING
#undef FIELD

/// A part of the record that is more than a number.
struct Piece {
    const char* name;
    bool (*equal)(const Machine& a, const Machine& b);
};

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): likewise
#define PIECE(name)                                                                                                    \
    {                                                                                                                  \
#name, [](const Machine& a, const Machine& b) { return a.name == b.name; }                                     \
    }
constexpr Piece PIECES[] = {
    PIECE(listing),
    PIECE(program.for_frames),
    PIECE(program.gosub_frames),
    PIECE(eval.value),
    PIECE(run.scroll),
    PIECE(run.stopped),
    PIECE(entry),
    PIECE(error.error_detail),
    PIECE(error.system_message),
    PIECE(keys),
    PIECE(screen.display_line),
    PIECE(sound.tone),
    {"the record", [](const Machine& a, const Machine& b) { return a == b; }},
};
#undef PIECE

} // namespace

std::span<const Field> fields() { return FIELDS; }

const Field* find_field(std::string_view name) {
    for (const Field& field : FIELDS) {
        if (field.name == name)
            return &field;
    }
    return nullptr;
}

std::string record_difference(const Machine& a, const Machine& b) {
    for (const Field& field : FIELDS) {
        if (field.get(a) != field.get(b))
            return std::string(field.name) + " " + std::to_string(field.get(a)) + " and " +
                   std::to_string(field.get(b));
    }
    for (int i = 0; i < CELL_COUNT; ++i) {
        if (a.variables[static_cast<std::size_t>(i)] != b.variables[static_cast<std::size_t>(i)])
            return "cell " + std::string(cell_name(i).view());
    }
    for (const Piece& piece : PIECES) {
        if (!piece.equal(a, b))
            return piece.name;
    }
    return {};
}

} // namespace quillon
