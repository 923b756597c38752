// SPDX-License-Identifier: MIT
// Reading keys with curses.
#include "terminal/terminal_input.h"

#include "keys/virtual_keys.h"

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

/// Keys with a virtual key of their own. F1 and F2 change the size of a window, and F10 opens its menu: not here.
struct NamedKey {
    int key;
    int virtual_key;
};

// clang-format off
constexpr NamedKey NAMED_KEYS[] = {
    {KEY_BACKSPACE, VK_BACKSPACE}, {KEY_BTAB, VK_TAB},  {KEY_ENTER, VK_ENTER}, {KEY_END, VK_END},
    {KEY_HOME, VK_HOME},           {KEY_LEFT, VK_LEFT}, {KEY_UP, VK_UP},       {KEY_RIGHT, VK_RIGHT},
    {KEY_DOWN, VK_DOWN},           {KEY_IC, VK_INSERT}, {KEY_DC, VK_DELETE},   {KEY_F(3), VK_F3},
    {KEY_F(4), VK_F4},             {KEY_F(5), VK_F5},   {KEY_F(6), VK_F6},     {KEY_F(7), VK_F7},
    {KEY_F(8), VK_F8},             {KEY_F(9), VK_F9},   {KEY_F(12), VK_F12},
};

constexpr NamedKey CONTROL_KEYS[] = {
    {'\b', VK_BACKSPACE}, {KEY_RUBOUT, VK_BACKSPACE}, {'\t', VK_TAB},
    {'\r', VK_ENTER},     {'\n', VK_ENTER},           {KEY_ESCAPE, VK_ESCAPE},
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
