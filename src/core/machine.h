// The machine: one plain record of everything that the simulated pocket computer knows, and its resets. Every
// operation takes the record as its first argument; there are no globals, so several machines can run side by side.
// A record is large (about 200 KiB): keep it on the heap. It points into itself, so it is neither copied nor moved.
#pragma once

#include "core/expression_code.h"
#include "core/host.h"
#include "core/language.h"
#include "core/messages.h"
#include "core/scan_cache.h"
#include "core/states.h"
#include "core/text.h"

#include <array>
#include <cstdint>
#include <string>

namespace quillon {

constexpr int AREA_COUNT = 10;
constexpr int LINES_PER_AREA = 512;
constexpr int CELL_COUNT = 223;
constexpr int DOLLAR_CELL = CELL_COUNT - 1; ///< the string variable $
constexpr int DISPLAY_WIDTH = 12;           ///< character cells of the LCD
constexpr int DISPLAY_LINE_SIZE = 511;      ///< characters of the display line
constexpr int FOR_DEPTH_MAX = 4;
constexpr int GOSUB_DEPTH_MAX = 7;
constexpr int DATA_INDEX_SIZE = 512;
constexpr int HISTORY_SIZE = 8;

/// What positions in a text point to where there is none: the one empty text, so that it can be told from others.
inline constexpr char NO_TEXT[] = "";

/// A line of a program area. Its text begins right behind the line number and ends at a NUL.
struct ProgramLine {
    int number = 0;
    const char* text = nullptr;
};

/// A program area of the loaded listing. One without lines is as good as empty.
struct ProgramArea {
    bool used = false; ///< the listing has a header for it
    int line_count = 0;
    std::array<ProgramLine, LINES_PER_AREA> lines{}; ///< in listing order, numbers strictly ascending
    std::array<std::uint16_t, 64> found_lines{}; ///< hints: indices of lines that were found, by the number's low bits
};

/// A variable cell: it holds a number or a string, never both.
struct Variable {
    BoundedText<3> name;  ///< "A".."Z", then "1".."197"
    int kind = -1;        ///< -1 never assigned (reads as 0), 0 number, 1 string
    int string_flag = 0;  ///< 1 after a string assignment, 0 after a numeric one
    double number = 0;    ///< 0 while a string is held
    BoundedText<31> text; ///< empty while a number is held
};

/// The operand that lexer, evaluator and handlers pass on.
struct Value {
    BoundedText<127> text;        ///< of strings only
    double number = 0;            ///< of numbers; a cell's number as it was read, or what was computed from it
    Variable* variable = nullptr; ///< the cell of VALUE_NUMVAR and VALUE_STRVAR
    int kind = VALUE_NONE;        ///< ValueKind; of a computed result, the kind of its first operand
    int complete = 0;             ///< 1 for a computed result, which cannot be assigned to
};

/// An open FOR loop, identified by its control variable.
struct ForFrame {
    Variable* variable = nullptr;
    double step = 0;
    double limit = 0;
    int line = 0;
    int area = 0;
    const char* text = nullptr; ///< behind the FOR statement
};

/// Where a GOSUB goes back to.
struct GosubFrame {
    int line = 0;
    int area = 0;
    const char* text = nullptr;
};

/// An entry of the DATA index.
struct DataItem {
    enum Kind : int { END = -1, ITEM = 0, LINE = 1, AREA = 2 };
    int kind = END;
    int arg = 0;          ///< line number of a LINE, area number of an AREA
    BoundedText<63> text; ///< of an ITEM
};

constexpr int SAMPLE_RATE = 44100;
constexpr int WAVE_HEADER_SIZE = 44;
constexpr int TONE_SAMPLES_MAX = 3168; ///< of the lowest tone

/// A tone: the RIFF/WAVE image that the host loops, 8-bit mono samples behind 44 bytes of header.
struct Tone {
    std::array<std::uint8_t, WAVE_HEADER_SIZE + TONE_SAMPLES_MAX> image{};
    int samples = 0;     ///< in the image; 0 before the first tone
    int half_period = 0; ///< samples of half a period
};

struct Machine {
    Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // What the machine stands on: set once by whoever makes it.
    const Language* language = nullptr;
    Host host;
    MessageCatalogue catalogue;

    // The listing. Written by a load only; positions in its text are dropped with it.
    std::string listing_text; ///< empty when no listing is loaded; line feeds of program lines are NULs
    ScanCache scan_cache; ///< its tokens, and its expressions as code: made from it alone, and nothing of them shows
    ExpressionCache expression_cache;
    std::array<ProgramArea, AREA_COUNT> areas{};
    std::array<DataItem, DATA_INDEX_SIZE> data_index{};
    int data_pos = 0; ///< where READ looks for the next item

    // The variable memory. It outlives loads and runs; VAC and the program itself change it.
    std::array<Variable, CELL_COUNT> variables{};

    // Where the program is. A run sets it, a reset takes it back to the selection of an area.
    int run_state = STATE_SELECT;
    int prev_state = STATE_RUN;      ///< the state before the last change
    int base_state = STATE_RUN;      ///< where EXE leads after a wait: the program (0) or command mode (6)
    int saved_run_state = STATE_RUN; ///< what the host's Run goes back to after its Stop
    int cur_area = 0;
    int cur_line = 0;                 ///< index of the line in its area
    int run_page = 0;                 ///< the area that RUN starts, 0-9; outlives runs and loads
    int program_ended = 0;            ///< 1 once the last line has been passed
    const char* stmt_start = nullptr; ///< where the next tick goes on; null when there is nothing to run
    ForFrame for_frames[FOR_DEPTH_MAX];
    int for_depth = 0;
    GosubFrame gosub_frames[GOSUB_DEPTH_MAX];
    int gosub_depth = 0;

    // The scanner and the evaluator, within a statement.
    const char* scan_ptr = NO_TEXT;    ///< the next character to read; never null
    const char* token_start = NO_TEXT; ///< first character of the current token; never null
    int token = TOKEN_END;
    int prev_token = TOKEN_END;
    Value value; ///< the current operand
    int stmt_kind = KIND_NONE;
    int saved_token = 0; ///< `token` and `stmt_kind` as a wait left them
    int saved_stmt_kind = KIND_NONE;
    Value saved_value;     ///< `value` as STOP left it
    int operand_done = 0;  ///< 1 when the last thing evaluated gave a value, 0 after a statement
    int nesting_depth = 0; ///< how deep the expression being evaluated is nested

    // Errors. `error_code` holds the machine until it is cleared; the texts stay for the host to show.
    int error_code = ERROR_NONE;
    BoundedText<8191> error_detail;   ///< UTF-8
    BoundedText<4095> system_message; ///< UTF-8: faults of a listing

    // The display line and what PRINT has yet to show of it.
    char display_line[DISPLAY_LINE_SIZE + 1];
    int display_cursor = 0;              ///< write column
    int display_offset = 0;              ///< first visible column as last drawn
    BoundedText<127> pending_print_text; ///< what has yet to scroll in
    int print_clear_pending = 0;         ///< 1 after an empty PRINT: the next one clears the line first
    int item_printed = 0;                ///< 1 once a PRINT of the command line has written an item, or ended the line
    int wait_counter = 0;                ///< ticks until the next scroll step
    int state_after_scroll = STATE_RUN;  ///< run state to enter when a scroll has ended
    int kind_after_scroll = KIND_NONE;   ///< statement context to restore then
    int cursor_visible = 0;              ///< blink phase
    int blink_counter = 0;

    // Keys. Written by whoever has a keyboard, read and cleared by the tick.
    BoundedText<15> key_string; ///< the pending key: a character, a key code, or a whole word; empty for none
    int held_key = 0;           ///< virtual key that typed it, 0 for none
    int soft_key_code = 0;      ///< key code held on the soft keyboard, 0 for none
    int enter_request = 0;      ///< 1: EXE was pressed
    int ctrl_flag = 0;          ///< modifiers as sampled before the tick
    int shift_flag = 0;
    int alt_flag = 0;

    // The line that is typed, for INPUT or in command mode.
    Value entry_line;                                     ///< its text; for INPUT the target cell with its kind
    BoundedText<127> command_buffer;                      ///< a committed entry, where the scanner reads it
    const char* saved_scan_ptr = NO_TEXT;                 ///< where the program was meanwhile; never null
    std::array<BoundedText<127>, HISTORY_SIZE> history{}; ///< command lines, the newest first
    int history_index = -1;                               ///< the one that is recalled, -1 for none
    double last_result = 0;                               ///< of the last command line
    BoundedText<15> prev_key_string;                      ///< the key as it was at the last edit: a held key acts once
    int typed_wait = 0;    ///< 1 while a PRINT or INPUT of a command line waits: back to command mode
    int stopped_token = 0; ///< `token`, statement context and `value` of the program that is stopped meanwhile
    int stopped_kind = KIND_NONE;
    Value stopped_value;
    Value stopped_entry; ///< `entry_line` of that program: the target of its INPUT

    // The soft keyboard.
    int soft_shift_latch = 0;  ///< S
    int soft_alt_latch = 0;    ///< F
    int soft_ctrl_latch = 0;   ///< EXT
    int soft_open = 0;         ///< 1 while the keyboard is shown
    int soft_pressed_key = -1; ///< index of the key the mouse is on, -1 for none
    int soft_held_kind = 0;    ///< kind of the key that is held, 0 for none
    int soft_mouse_down = 0;   ///< 1: a press has yet to be carried out
    int soft_mouse_up = 0;     ///< 1: a release has yet to be carried out
    int soft_repeat_count = 0; ///< ticks the held key has been down, towards its next repeat
    int soft_highlight = -1;   ///< index of the key that is drawn pressed, -1 for none
    int soft_changed = 0;      ///< 1: the picture is to be drawn anew; whoever draws it clears this

    // Tracing: single steps while the trace window is open.
    int trace_mode = 0;         ///< 1 while the trace window is open
    int trace_step_flag = 1;    ///< 1 when the trace window has yet to be refreshed for the statement that waits
    int trace_step_request = 0; ///< 1: run one statement

    // The tone that plays.
    Tone tone;
    int sound_ticks_left = 0; ///< ticks until it is stopped
    int sound_holds_run = 0;  ///< 1: the program waits for its end

    // Modes and settings. They outlive runs and loads (PRT excepted); the host keeps most of them in a file.
    int angle_unit = ANGLE_DEG;
    int print_mode = 0;            ///< 1 lights PRT
    int set_e_digits = -1;         ///< significant digits of the exponent form, 0 for 8, -1 not in force
    int set_f_digits = -1;         ///< decimals of the fixed form, -1 not in force
    int set_g_digits = 9;          ///< kept, but nothing depends on it
    int wait_print_sc = 24;        ///< ticks between two scroll steps
    int wait_print_sc_ini = 64;    ///< ticks before the first scroll step
    int timer_interval = 30;       ///< milliseconds between ticks
    int cursor_interval = 13;      ///< ticks of a blink phase, less 2
    int ascii_mode = 1;            ///< 1: keys type what is printed on them; 0: they are the machine's own keyboard
    int pcm_beep = 1;              ///< 1: tones are played
    int beep_volume = 10;          ///< 0-10
    int zoom = 1;                  ///< 1-12
    int overdrive = 0;             ///< 1 while `timer_interval` is shortened
    int saved_timer_interval = 30; ///< the configured one meanwhile
    std::uint32_t random_seed = 1;
};

/// Names the 223 cells and makes them all never assigned.
void init_variables(Machine& m);

/// Makes all cells never assigned; the names stay.
void clear_variables(Machine& m);

/// Forgets all areas and lines and clears a pending error; seeds the random generator with the host's milliseconds.
void clear_program_areas(Machine& m);

/// Empties the FOR and GOSUB stacks.
void clear_stacks(Machine& m);

/// Clears what a run leaves behind for its next tick: the end of the program, waits, scrolls, saved contexts.
void clear_run_marks(Machine& m);

/// Back to the selection of a program area, with nothing left of a run: stacks, position, pending error, display line,
/// waits and PRT are cleared; variables, listing, settings and the angle unit stay.
void reset_machine(Machine& m);

/// Changes the run state and remembers the old one in `prev_state`.
void enter_state(Machine& m, int state);

/// Saves where a statement is, for when the machine goes on after a stop.
void save_stop(Machine& m);

/// Empties the line that is typed and the display line: so every entry and every command line begins. The first key
/// counts, though it may be the one that was typed last.
void clear_entry_line(Machine& m);

/// Forgets the pending key of the PC keyboard.
void clear_key(Machine& m);

/// The BASIC number of a line of the current area by its index, 0 when there is none.
int line_number(const Machine& m, int line);

/// The same of the line at `cur_line`.
int current_line_number(const Machine& m);

} // namespace quillon
