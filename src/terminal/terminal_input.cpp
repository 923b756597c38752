// SPDX-License-Identifier: MIT
// Reading keys with curses.
#include "terminal/terminal_input.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <termios.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cwchar>

namespace quillon {
namespace {

constexpr int KEY_CTRL_A = 1;
constexpr int KEY_CTRL_C = 3;
constexpr int KEY_CTRL_L = 12;
constexpr int KEY_CTRL_Q = 17;
constexpr int KEY_ESCAPE = 27;
constexpr int KEY_RUBOUT = 127;
constexpr int VIRTUAL_KEY_F1 = 112;

/// Keys with a virtual key of their own. F1 and F2 change the size of a window, and F10 opens its menu: not here.
struct NamedKey {
    int key;
    int virtual_key;
};

// clang-format off
constexpr NamedKey NAMED_KEYS[] = {
    {KEY_BACKSPACE, 8}, {KEY_BTAB, 9},   {KEY_ENTER, 13}, {KEY_END, 35},  {KEY_HOME, 36}, {KEY_LEFT, 37},
    {KEY_UP, 38},       {KEY_RIGHT, 39}, {KEY_DOWN, 40},  {KEY_IC, 45},   {KEY_DC, 46},
    {KEY_F(3), 114},    {KEY_F(4), 115}, {KEY_F(5), 116}, {KEY_F(6), 117}, {KEY_F(7), 118}, {KEY_F(8), 119},
    {KEY_F(9), 120},    {KEY_F(12), VIRTUAL_KEY_F1 + 11},
};

constexpr NamedKey CONTROL_KEYS[] = {
    {'\b', 8}, {KEY_RUBOUT, 8}, {'\t', 9}, {'\r', 13}, {'\n', 13}, {KEY_ESCAPE, 27},
};
// clang-format on

template <std::size_t N>
int find_key(const NamedKey (&keys)[N], int key) {
    for (const NamedKey& named : keys) {
        if (named.key == key)
            return named.virtual_key;
    }
    return 0;
}

TerminalInput named_input(int virtual_key) {
    TerminalInput input;
    input.kind = virtual_key != 0 ? TerminalInput::KEY : TerminalInput::NOTHING;
    input.key.virtual_key = virtual_key;
    return input;
}

std::string to_utf8(wint_t character) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    const std::size_t size = std::wcrtomb(bytes, static_cast<wchar_t>(character), &state);
    return size == static_cast<std::size_t>(-1) ? std::string() : std::string(bytes, size);
}

TerminalInput character_input(wint_t character, bool alt) {
    switch (character) {
    case KEY_CTRL_A: return {TerminalInput::PREFIX};
    case KEY_CTRL_C: return {TerminalInput::STOP};
    case KEY_CTRL_L: return {TerminalInput::REDRAW};
    case KEY_CTRL_Q: return {TerminalInput::LEAVE};
    default: break;
    }
    TerminalInput input = named_input(find_key(CONTROL_KEYS, static_cast<int>(character)));
    if (input.kind == TerminalInput::NOTHING && character >= ' ') {
        input.kind = TerminalInput::KEY;
        input.key.character = to_utf8(character);
        input.key.alt = alt;
    }
    return input;
}

} // namespace

void prepare_terminal_input() {
    constexpr int ESCAPE_DELAY_MS = 25;
    ::raw();
    ::noecho();
    ::nonl();
    ::keypad(::stdscr, true);
    ::nodelay(::stdscr, true);
    ::set_escdelay(ESCAPE_DELAY_MS);
    ::curs_set(0);
    termios modes{};
    if (::tcgetattr(STDIN_FILENO, &modes) != 0)
        return;
    modes.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF); // Ctrl+Q and Ctrl+S are keys
    ::tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

std::optional<TerminalInput> read_terminal() {
    wint_t character = 0;
    const int result = ::wget_wch(::stdscr, &character);
    if (result == ERR)
        return std::nullopt;
    if (result == KEY_CODE_YES) {
        if (character == KEY_RESIZE)
            return TerminalInput{TerminalInput::RESIZE};
        return named_input(find_key(NAMED_KEYS, static_cast<int>(character)));
    }
    if (character != KEY_ESCAPE)
        return character_input(character, false);
    // A terminal sends Alt and a key as Escape and the key; Escape alone has nothing right behind it.
    wint_t behind = 0;
    if (::wget_wch(::stdscr, &behind) != OK)
        return character_input(character, false);
    return character_input(behind, true);
}

} // namespace quillon
