// SPDX-License-Identifier: MIT
// The machine: one plain record of everything that the simulated pocket computer knows, and its resets. Every operation
// takes the record as its first argument; there are no globals, so several machines can run side by side.
//
// The record is a value: copying it is a snapshot, and == compares two (numbers by their bits, texts by content).
// Positions and cells are indices, so it holds no pointer into itself. What it stands on (host, language, catalogue) is
// beside it, and the loaded listing is shared by all copies. About 30 KiB: keep it on the heap.
#pragma once

#include "core/listing.h"
#include "core/numbers.h"
#include "core/program_token.h"
#include "core/states.h"
#include "core/surroundings.h"
#include "core/text.h"

#include <array>
#include <cstdint>
#include <memory>

namespace quillon {

constexpr int CELL_COUNT = 223;
constexpr int DOLLAR_CELL = CELL_COUNT - 1; ///< the string variable $
constexpr int DISPLAY_WIDTH = 12;           ///< character cells of the LCD
constexpr int DISPLAY_LINE_SIZE = 511;      ///< characters of the display line
constexpr int FOR_DEPTH_MAX = 4;
constexpr int GOSUB_DEPTH_MAX = 7;
constexpr int HISTORY_SIZE = 8;

/// A variable cell by its index, 0-222.
using CellIndex = std::int16_t;
constexpr CellIndex NO_CELL = -1;

/// Whether two numbers have the same bits: zeros of different signs differ, equal not-a-numbers do not.
inline bool same_bits(double a, double b) { return bits_of(a) == bits_of(b); }

/// A variable cell: it holds a number or a string.
struct Variable {
    double number = 0;    ///< 0 while a string is held
    BoundedText<31> text; ///< empty while a number is held (save for what REC and POL leave)
    CellKind kind = CELL_UNASSIGNED;
    bool string_flag = false; ///< the last assignment was one of a string

    bool operator==(const Variable& other) const {
        return kind == other.kind && string_flag == other.string_flag && same_bits(number, other.number) &&
               text == other.text;
    }
};

/// The operand that evaluator and handlers pass on.
struct Value {
    BoundedText<127> text;       ///< of strings only
    double number = 0;           ///< of numbers; a cell's number as it was read, or what was computed from it
    CellIndex cell = NO_CELL;    ///< the cell of VALUE_NUMVAR and VALUE_STRVAR
    ValueKind kind = VALUE_NONE; ///< of a computed result, the kind of its first operand
    bool complete = false;       ///< a computed result, which cannot be assigned to

    bool operator==(const Value& other) const {
        return kind == other.kind && cell == other.cell && complete == other.complete &&
               same_bits(number, other.number) && text == other.text;
    }
};

/// An open FOR loop, identified by its control variable.
struct ForFrame {
    double step = 0;
    double limit = 0;
    CellIndex cell = NO_CELL;
    int area = 0;
    int line = 0;
    TokenIndex next = NOWHERE; ///< after the FOR statement

    bool operator==(const ForFrame& other) const {
        return cell == other.cell && area == other.area && line == other.line && next == other.next &&
               same_bits(step, other.step) && same_bits(limit, other.limit);
    }
};

/// Where a GOSUB returns to.
struct GosubFrame {
    int area = 0;
    int line = 0;
    TokenIndex next = NOWHERE;

    bool operator==(const GosubFrame&) const = default;
};

/// Where the program is. A run sets it; a reset takes it back to the selection of an area.
struct ProgramPosition {
    int cur_area = 0;
    int cur_line = 0;                ///< index of the line in its area
    TokenIndex stmt_start = NOWHERE; ///< where the next tick goes on; NOWHERE when there is nothing to run
    int for_depth = 0;
    int gosub_depth = 0;
    std::array<ForFrame, FOR_DEPTH_MAX> for_frames;
    std::array<GosubFrame, GOSUB_DEPTH_MAX> gosub_frames;
    int data_pos = 0; ///< where READ looks for the next item

    bool operator==(const ProgramPosition&) const = default;
};

/// Where a statement goes on after a wait or a stop.
struct Resume {
    TokenCode saved_token = TOKEN_UNKNOWN; ///< `token` and `stmt_kind` as they were
    StmtKind saved_stmt_kind = KIND_NONE;
    Value value; ///< the operand as a stop left it

    bool operator==(const Resume&) const = default;
};

/// A text of PRINT that is scrolling in.
struct Scroll {
    BoundedText<127> pending_print_text;     ///< what has yet to come
    RunState state_after_scroll = STATE_RUN; ///< run state to enter at the end
    StmtKind kind_after_scroll = KIND_NONE;  ///< statement context to restore then
    int wait_counter = 0;                    ///< ticks until the next step

    bool operator==(const Scroll&) const = default;
};

/// A program that is stopped while lines are typed in command mode. Without a kind it goes on with its next statement.
struct Stopped {
    Resume resume;
    Value entry; ///< the target of its INPUT

    bool operator==(const Stopped&) const = default;
};

/// Whether the machine runs, what it waits for, and how it goes on. Only core/run_control changes it.
struct RunControl {
    RunState run_state = STATE_SELECT;
    RunState prev_state = STATE_RUN;      ///< the state before the last change
    RunState base_state = STATE_RUN;      ///< where EXE leads after a wait: the program, or command mode
    RunState saved_run_state = STATE_RUN; ///< what the host's Run returns to after its Stop
    bool program_ended = false;           ///< the last line has been passed
    bool typed_wait = false;              ///< a PRINT or INPUT of a command line waits: back to command mode
    bool item_printed = false;            ///< a PRINT of the command line has written an item, or ended
    Resume resume;
    Scroll scroll;
    Stopped stopped;

    bool operator==(const RunControl&) const = default;
};

/// The evaluator, within a statement.
struct Evaluation {
    TokenIndex next = 0;                ///< the next token to read
    SourceOffset token_start = NOWHERE; ///< first character of the current token
    TokenCode token = TOKEN_END;
    TokenCode prev_token = TOKEN_END; ///< the one before; the end of a PRINT list looks for its separator there
    StmtKind stmt_kind = KIND_NONE;
    bool operand_done = false; ///< the last thing evaluated gave a value, and was no statement
    int nesting_depth = 0;     ///< how deep the expression being evaluated is nested
    Value value;               ///< the current operand

    bool operator==(const Evaluation&) const = default;
};

/// The pending error. `error_code` holds the machine until it is cleared; the texts stay for the host to show.
struct ErrorReport {
    ErrorCode error_code = ERROR_NONE;
    BoundedText<8191> error_detail;   ///< UTF-8
    BoundedText<4095> system_message; ///< UTF-8: faults of a listing

    bool operator==(const ErrorReport&) const = default;
};

/// The display line and its cursor.
struct Screen {
    std::array<char, DISPLAY_LINE_SIZE> display_line{};
    int display_cursor = 0;           ///< write column
    int display_offset = 0;           ///< first visible column, as the last tick left it
    bool print_clear_pending = false; ///< after an empty PRINT: the next one clears the line first
    bool cursor_visible = false;      ///< blink phase
    int blink_counter = 0;
    bool print_mode = false; ///< lights PRT

    bool operator==(const Screen&) const = default;
};

/// Keys as a host hands them in and the tick consumes them.
struct Keys {
    BoundedText<15> key_string; ///< the pending key: a character, a key code, or a whole word; empty for none
    int held_key = 0;           ///< virtual key that typed it, 0 for none
    bool enter_request = false; ///< EXE was pressed
    bool ctrl_flag = false;     ///< modifiers as sampled before the tick
    bool shift_flag = false;
    bool alt_flag = false;

    bool operator==(const Keys&) const = default;
};

/// The line being typed, for INPUT or in command mode, and what became of earlier ones.
struct EntryLine {
    Value entry_line;                                     ///< its text; for INPUT the target cell with its kind
    TypedLine typed;                                      ///< the line committed last
    TokenIndex saved_next = 0;                            ///< where the program was meanwhile
    std::array<BoundedText<127>, HISTORY_SIZE> history{}; ///< command lines, the newest first
    int history_index = -1;                               ///< the one that is recalled, -1 for none
    double last_result = 0;                               ///< of the last command line
    BoundedText<15> prev_key_string;                      ///< the key at the last edit: a held key acts once

    bool operator==(const EntryLine& other) const {
        return entry_line == other.entry_line && typed.text == other.typed.text && saved_next == other.saved_next &&
               history == other.history && history_index == other.history_index &&
               same_bits(last_result, other.last_result) && prev_key_string == other.prev_key_string;
    }
};

/// The soft keyboard's latches and its pressed key.
struct SoftKeyboard {
    int soft_key_code = 0;         ///< key code held on it, 0 for none
    bool soft_shift_latch = false; ///< S
    bool soft_alt_latch = false;   ///< F
    bool soft_ctrl_latch = false;  ///< EXT
    bool soft_open = false;        ///< the keyboard is shown
    int soft_pressed_key = -1;     ///< index of the key the mouse is on, -1 for none
    int soft_held_kind = 0;        ///< kind of the key that is held (keys/soft_keys), 0 for none
    bool soft_mouse_down = false;  ///< a press has yet to be carried out
    bool soft_mouse_up = false;    ///< a release has yet to be carried out
    int soft_repeat_count = 0;     ///< ticks the held key has been down, towards its next repeat
    int soft_highlight = -1;       ///< index of the key drawn pressed, -1 for none

    bool operator==(const SoftKeyboard&) const = default;
};

/// Single steps while the trace window is open.
struct Trace {
    bool trace_mode = false;         ///< the trace window is open
    bool trace_step_flag = true;     ///< the trace window has yet to be refreshed for the statement that waits
    bool trace_step_request = false; ///< run one statement

    bool operator==(const Trace&) const = default;
};

constexpr int SAMPLE_RATE = 44100;
constexpr int WAVE_HEADER_SIZE = 44;
constexpr int TONE_SAMPLES_MAX = 3168; ///< of the lowest tone

/// A tone: the RIFF/WAVE image that the host loops, 8-bit mono samples after 44 bytes of header.
struct Tone {
    std::array<std::uint8_t, WAVE_HEADER_SIZE + TONE_SAMPLES_MAX> image{};
    int samples = 0;     ///< in the image; 0 before the first tone
    int half_period = 0; ///< samples of half a period

    bool operator==(const Tone&) const = default;
};

/// The tone that plays.
struct Sound {
    Tone tone;
    int sound_ticks_left = 0;     ///< ticks until it is stopped
    bool sound_holds_run = false; ///< the program waits for its end

    bool operator==(const Sound&) const = default;
};

/// Modes and settings. They outlive runs and loads; the host keeps them in a file.
struct Settings {
    AngleUnit angle_unit = ANGLE_DEG;
    int run_page = 0;           ///< the area that RUN starts, 0-9
    int set_e_digits = -1;      ///< significant digits of the exponent form, 0 for 8, -1 not in force
    int set_f_digits = -1;      ///< decimals of the fixed form, -1 not in force
    int set_g_digits = 9;       ///< kept, but nothing depends on it
    int wait_print_sc = 24;     ///< ticks between two scroll steps
    int wait_print_sc_ini = 64; ///< ticks before the first scroll step
    int timer_interval = 30;    ///< milliseconds between ticks
    int cursor_interval = 13;   ///< ticks of a blink phase, less 2
    bool ascii_mode = true;     ///< keys type what is printed on them; else they are the machine's own keyboard
    bool pcm_beep = true;       ///< tones are played
    int beep_volume = 10;       ///< 0-10
    int zoom = 1;               ///< 1-12

    bool operator==(const Settings&) const = default;
};

/// Overdrive: shorter ticks for a while.
struct Speed {
    bool overdrive = false;        ///< `timer_interval` is shortened
    int saved_timer_interval = 30; ///< the configured one meanwhile

    bool operator==(const Speed&) const = default;
};

/// The loaded listing, never null. Equal to another with the same text.
struct ListingReference {
    std::shared_ptr<const Listing> pointer = empty_listing();

    const Listing& operator*() const { return *pointer; }
    const Listing* operator->() const { return pointer.get(); }
    bool operator==(const ListingReference& other) const {
        return pointer == other.pointer || pointer->text == other.pointer->text;
    }
};

struct Machine {
    Machine();

    SurroundingsReference around; ///< host, language and catalogue: no part of the value
    ListingReference listing;     ///< replaced by a load

    std::array<Variable, CELL_COUNT> variables{}; ///< outlive loads and runs; VAC and the program change them
    std::uint32_t random_seed = 1;

    ProgramPosition program;
    RunControl run;
    Evaluation eval;
    ErrorReport error;
    Screen screen;
    Keys keys;
    EntryLine entry;
    SoftKeyboard soft;
    Trace trace;
    Sound sound;
    Settings settings;
    Speed speed;

    bool operator==(const Machine&) const = default;
};

/// Whether an error is pending.
inline bool failed(const Machine& m) { return m.error.error_code != ERROR_NONE; }

/// The token at a place in the listing or in the typed line.
inline const ProgramToken& token_at(const Machine& m, TokenIndex index) {
    return index < TYPED ? m.listing->tokens[static_cast<std::size_t>(index)]
                         : m.entry.typed.tokens[static_cast<std::size_t>(index - TYPED)];
}

/// The area that the program is in.
inline const ProgramArea& current_area(const Machine& m) {
    return m.listing->areas[static_cast<std::size_t>(m.program.cur_area)];
}

/// The cell with an index.
inline Variable& cell_at(Machine& m, CellIndex cell) { return m.variables[static_cast<std::size_t>(cell)]; }
inline const Variable& cell_at(const Machine& m, CellIndex cell) { return m.variables[static_cast<std::size_t>(cell)]; }

/// A line is being typed: an entry of INPUT, or a command line.
inline bool is_typing(const Machine& m) { return m.run.run_state == STATE_INPUT || m.run.run_state == STATE_COMMAND; }

/// A prompt, a refused entry or a result waits for a key.
inline bool waits_for_key(const Machine& m) {
    return m.run.run_state == STATE_RUN &&
           (m.eval.stmt_kind == KIND_PROMPT || m.eval.stmt_kind == KIND_INPUT_ERROR || m.eval.stmt_kind == KIND_RESULT);
}

/// The machine waits for a person, or has ended.
inline bool waits_for_person(const Machine& m) {
    const bool running = m.run.run_state == STATE_RUN || m.run.run_state == STATE_TO_COMMAND;
    const bool error_held = failed(m) && m.error.error_code != ERROR_INPUT;
    return !running || waits_for_key(m) || error_held;
}

/// Makes all cells never assigned.
void clear_variables(Machine& m);

/// Empties the line that is typed and the display line: so every entry and every command line begins. The first key
/// counts, though it may be the one that was typed last.
void clear_entry_line(Machine& m);

/// The BASIC number of a line of the current area by its index, 0 when it does not exist.
int line_number(const Machine& m, int line);

/// The same of the line at `cur_line`.
int current_line_number(const Machine& m);

} // namespace quillon
