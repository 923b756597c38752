// SPDX-License-Identifier: MIT
// Drawing with curses.
#include "terminal/play_screen.h"

#include "core/machine.h"
#include "shell/commands.h"
#include "shell/simulator.h"
#include "terminal/lcd_cells.h"
#include "terminal/play_keys.h"
#include "terminal/wrapped_text.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

namespace quillon {
namespace {

constexpr short LCD_PAIR = 1;
constexpr int LCD_MARGIN = 2;
constexpr int LCD_COLUMNS = LCD_DOT_COLUMNS + 2 * LCD_MARGIN;
constexpr int LCD_ROWS = LCD_BLOCK_ROWS + 2;
constexpr int OTHER_ROWS = 3; ///< indicators, message, status

/// The nearest colour of the 6 x 6 x 6 cube that terminals of 256 colours have.
short cube_colour(Colour colour) {
    const auto level = [colour](unsigned shift) { return static_cast<int>((colour >> shift & 0xFF) + 25) / 51; };
    return static_cast<short>(16 + 36 * level(16) + 6 * level(8) + level(0));
}

/// What the terminal can show of a text: one line, and ASCII where it has no UTF-8.
std::string showable(std::string text, bool utf8) {
    for (char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < ' ' || byte == 127)
            c = ' ';
        else if (byte > 127 && !utf8)
            c = '?';
    }
    return text;
}

/// Writes a line, cut at the right edge whatever the width of its characters.
void put_line(int row, int column, const std::string& text, attr_t attributes) {
    if (row < 0 || row >= LINES || column >= COLS)
        return;
    WINDOW* line = ::derwin(::stdscr, 1, COLS - column, row, column);
    if (line == nullptr)
        return;
    ::wattrset(line, static_cast<int>(attributes));
    ::waddstr(line, text.c_str());
    ::delwin(line);
}

attr_t lcd_attributes() { return ::has_colors() ? static_cast<attr_t>(COLOR_PAIR(LCD_PAIR)) : A_NORMAL; }

/// The LCD in half blocks with a margin around it.
void draw_blocks(const LcdPicture& picture, int row) {
    const std::string margin(LCD_MARGIN, ' ');
    const std::string blank(LCD_COLUMNS, ' ');
    put_line(row, 0, blank, lcd_attributes());
    for (std::string& blocks : lcd_block_rows(picture)) {
        blocks.insert(0, margin).append(margin);
        put_line(++row, 0, blocks, lcd_attributes());
    }
    put_line(row + 1, 0, blank, lcd_attributes());
}

/// Writes a message on one row, or on as many as it takes where there are more; returns the row below it.
int draw_message(const std::string& message, int row) {
    const int end = std::max(LINES - 1, row + 1); // the status is below
    for (const std::string& line : wrap_text(message, COLS)) {
        if (row < end)
            put_line(row++, 0, line, A_BOLD);
    }
    return row;
}

std::string indicators_text(const LcdPicture& picture) {
    std::string text;
    for (const std::string_view name : lit_indicators(picture))
        text.append(text.empty() ? "" : "  ").append(name);
    return text;
}

bool has_room_for_blocks() { return COLS >= LCD_COLUMNS && LINES >= LCD_ROWS + OTHER_ROWS; }

/// Whether the machine is at a place in a program.
bool shows_line(const Machine& m) {
    const bool at_line = m.program.cur_line < static_cast<int>(current_area(m).lines.size());
    return m.run.run_state != STATE_SELECT && m.run.run_state != STATE_COMMAND && at_line;
}

} // namespace

void fit_screen() {
    constexpr int ROWS_MAX = 200; // curses keeps every cell of a screen several times
    constexpr int COLUMNS_MAX = 500;
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0)
        ::resizeterm(std::min<int>(size.ws_row, ROWS_MAX), std::min<int>(size.ws_col, COLUMNS_MAX));
}

void set_lcd_colours(const Simulator& s) {
    if (!::has_colors())
        return;
    ::start_color();
    ::use_default_colors();
    constexpr int CUBE_COLOURS = 256;
    if (COLORS >= CUBE_COLOURS)
        ::init_pair(LCD_PAIR, cube_colour(s.preferences.pal_on), cube_colour(s.preferences.pal_bg));
    else
        ::init_pair(LCD_PAIR, COLOR_BLACK, COLOR_GREEN);
}

std::string status_text(const Simulator& s, KeyLevel level) {
    const Machine& m = s.machine;
    const int area = shows_line(m) ? m.program.cur_area : m.settings.run_page;
    std::string text = "P" + std::to_string(area);
    if (shows_line(m))
        text += " line " + std::to_string(current_line_number(m));
    text += m.speed.overdrive ? "  Overdrive " : "  ";
    text += std::to_string(m.settings.timer_interval) + " ms  ^A level: ";
    text += level_name(level);
    text += m.trace.trace_mode ? "  TRACE: Tab steps" : "";
    return text + "  F5 run  F6 command  ^C stop  ^Q leave";
}

void draw_screen(const Simulator& s, const ScreenTexts& texts) {
    ::werase(::stdscr);
    int row = 0;
    const bool blocks = texts.dots && texts.utf8 && has_room_for_blocks();
    const bool all_rows = LINES > OTHER_ROWS; // else the LCD and the status come first
    if (all_rows)
        put_line(row++, 0, indicators_text(s.lcd), A_NORMAL);
    const int lcd_row = row;
    if (blocks)
        draw_blocks(s.lcd, row);
    else
        put_line(row, 0, lcd_text(s.lcd, texts.utf8), lcd_attributes());
    row += blocks ? LCD_ROWS : 1;
    if (all_rows)
        row = draw_message(showable(texts.message, texts.utf8), row);
    put_line(row, 0, status_text(s, texts.level), LINES > 1 ? A_REVERSE : A_NORMAL);
    ::wmove(::stdscr, lcd_row, 0); // where a screen reader looks
    ::touchwin(::stdscr);
    ::wrefresh(::stdscr);
}

} // namespace quillon
