// SPDX-License-Identifier: MIT
// Virtual keys to machine keys, and the translation by modifier level.
#include "keys/key_map.h"

#include "core/charset.h"
#include "core/controls.h"
#include "core/host_commands.h"
#include "core/machine.h"
#include "core/setting_ranges.h"
#include "keys/key_tables.h"

namespace quillon {
namespace {

constexpr unsigned char CHAR_BACKSLASH = 0x98;

/// Keys that type one code of their own in both modes.
struct FixedKey {
    int virtual_key;
    unsigned char code;
};

constexpr unsigned char code_of(MachineKey key) { return static_cast<unsigned char>(key); }

// clang-format off
constexpr FixedKey FIXED_KEYS[] = {
    {VK_BACKSPACE,    code_of(KEY_BACKSPACE)}, {VK_END,          code_of(KEY_ANSWER)}, {VK_HOME, code_of(KEY_CLEAR)},
    {VK_LEFT,         code_of(KEY_LEFT)},      {VK_UP,           code_of(KEY_UP)},
    {VK_RIGHT,        code_of(KEY_RIGHT)},     {VK_DOWN,         code_of(KEY_DOWN)},
    {VK_INSERT,       code_of(KEY_INSERT)},    {VK_DELETE,       code_of(KEY_DELETE)},
    {VK_PAD_MULTIPLY, '*'},                    {VK_PAD_ADD,      '+'},
    {VK_PAD_SUBTRACT, '-'},                    {VK_PAD_DECIMAL,  '.'},                 {VK_PAD_DIVIDE, '/'},
    {VK_F7,           CHAR_EXPONENT},          {VK_F8,           CHAR_PI},
};

/// Punctuation keys of machine mode: they are other keys of the pocket computer's.
constexpr FixedKey MACHINE_KEYS[] = {
    {VK_COMMA, ' '}, {VK_MINUS, '-'}, {VK_PERIOD, '='}, {VK_SLASH, CHAR_EXPONENT}, {VK_CARET, '^'},
};

/// Virtual keys beyond 127 and what is printed on them.
constexpr FixedKey ASCII_KEYS[] = {
    {VK_COLON, ':'},  {VK_SEMICOLON, ';'}, {VK_COMMA, ','},        {VK_MINUS, '-'},         {VK_PERIOD, '.'},
    {VK_SLASH, '/'},  {VK_AT, '@'},        {VK_OPEN_BRACKET, '['}, {VK_CLOSE_BRACKET, ']'}, {VK_CARET, '^'},
    // These keep their codes until the translation.
    {VK_YEN, VK_YEN}, {VK_BACKSLASH, VK_BACKSLASH}, {CHAR_PI, CHAR_PI}, {CHAR_EXPONENT, CHAR_EXPONENT},
};
// clang-format on

/// Keys that stand for a command of the host.
struct CommandKey {
    int virtual_key;
    HostCommand command;
};

constexpr CommandKey COMMAND_KEYS[] = {
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define HOST_COMMAND(name, number, button, key, ...) {key, COMMAND_##name},
#include "core/host_commands.def"
#undef HOST_COMMAND
};

/// The command of a key, 0 for none. Pause is another Escape.
int command_of(int virtual_key) {
    for (const CommandKey& key : COMMAND_KEYS) {
        if (virtual_key != VK_NONE && key.virtual_key == (virtual_key == VK_PAUSE ? VK_ESCAPE : virtual_key))
            return key.command;
    }
    return 0;
}

template <std::size_t N>
unsigned char find_code(const FixedKey (&keys)[N], int virtual_key) {
    for (const FixedKey& key : keys) {
        if (key.virtual_key == virtual_key)
            return key.code;
    }
    return 0;
}

void change_zoom(Machine& m, int step) {
    const int zoom = m.settings.zoom + step;
    if (zoom >= SettingRanges::zoom.lowest && zoom <= SettingRanges::zoom.highest)
        m.settings.zoom = zoom;
    m.around->host.resize_window();
}

/// Keys that act and type nothing. False when the key is none of these.
bool act_on_key(Machine& m, int virtual_key, bool auto_repeat) {
    if (const int command = command_of(virtual_key)) {
        if (command != COMMAND_STOP || m.run.run_state != STATE_COMMAND) // a line that is typed is nothing to stop
            m.around->host.run_command(command);
        return true;
    }
    switch (virtual_key) {
    case VK_TAB: take_step(m); return true;
    case VK_ENTER:
        if (!auto_repeat)
            press_exe(m);
        return true;
    case VK_F1: change_zoom(m, -1); return true;
    case VK_F2: change_zoom(m, 1); return true;
    case VK_F9: m.around->host.write_dump(); return true;
    case VK_F12: m.around->host.take_snapshot(); return true;
    case VK_F10:
    case VK_F11: return true;
    default: return false;
    }
}

/// The code of a key that types, 0 for none.
unsigned char typed_code(const Machine& m, int virtual_key) {
    if (virtual_key >= VK_PAD_0 && virtual_key <= VK_PAD_9)
        return static_cast<unsigned char>('0' + virtual_key - VK_PAD_0);
    if (const unsigned char code = find_code(FIXED_KEYS, virtual_key))
        return code;
    if (!m.settings.ascii_mode && virtual_key > 127)
        return find_code(MACHINE_KEYS, virtual_key);
    if (virtual_key > 127)
        return find_code(ASCII_KEYS, virtual_key);
    return virtual_key >= ' ' ? static_cast<unsigned char>(virtual_key) : 0;
}

int modifier_level(const Machine& m) {
    if (m.keys.alt_flag)
        return !m.keys.ctrl_flag ? LEVEL_ALT : LEVEL_NONE;
    return m.keys.shift_flag + 2 * m.keys.ctrl_flag;
}

/// Replaces the pending key by what it types at the current level. A key without a row stays as it is.
void translate_key(Machine& m) {
    const int level = modifier_level(m);
    const auto rows = m.settings.ascii_mode ? ascii_key_rows() : machine_key_rows();
    for (const KeyRow& row : rows) {
        if (level != LEVEL_NONE && row.key == as_byte(m.keys.key_string[0])) {
            m.keys.key_string = row.texts[level - 1];
            break;
        }
    }
    if (as_byte(m.keys.key_string[0]) == VK_YEN)
        m.keys.key_string.set(0, '\\');
    else if (as_byte(m.keys.key_string[0]) == VK_BACKSLASH)
        m.keys.key_string.set(0, static_cast<char>(CHAR_BACKSLASH));
}

void set_key(Machine& m, unsigned char code) {
    m.keys.key_string.clear();
    if (code != 0)
        m.keys.key_string.push_back(static_cast<char>(code));
}

} // namespace

bool acts_at_once(int virtual_key) {
    return virtual_key == VK_TAB || virtual_key == VK_PAUSE || virtual_key == VK_ESCAPE ||
           (virtual_key >= VK_F1 && virtual_key <= VK_F12 && find_code(FIXED_KEYS, virtual_key) == 0);
}

void on_key_down(Machine& m, int virtual_key, bool auto_repeat) {
    m.keys.key_string.clear();
    if (act_on_key(m, virtual_key, auto_repeat))
        return;
    const unsigned char code = typed_code(m, virtual_key);
    set_key(m, code);
    m.keys.held_key = code != 0 && virtual_key != VK_SEMICOLON ? virtual_key : 0;
    if (code != 0)
        translate_key(m);
}

void on_sys_key_down(Machine& m, int virtual_key) {
    if (m.settings.ascii_mode)
        return;
    const bool types = virtual_key >= ' ' && virtual_key <= 127;
    set_key(m, types ? static_cast<unsigned char>(virtual_key) : 0);
    m.keys.held_key = types ? virtual_key : 0;
    if (types)
        translate_key(m);
}

void on_character(Machine& m, char character, int held_code) {
    const char typed = m.keys.shift_flag ? to_lower(character) : to_upper(character);
    set_key(m, as_byte(typed));
    m.keys.held_key = held_code;
}

void sample_modifiers(Machine& m, bool shift, bool ctrl, bool alt) {
    m.keys.shift_flag = shift || m.soft.soft_shift_latch;
    m.keys.ctrl_flag = ctrl || m.soft.soft_ctrl_latch;
    m.keys.alt_flag = alt || m.soft.soft_alt_latch;
}

bool is_key_unread(const Machine& m) {
    return is_typing(m) && !m.keys.key_string.empty() && m.keys.key_string.view() != m.entry.prev_key_string.view();
}

} // namespace quillon
