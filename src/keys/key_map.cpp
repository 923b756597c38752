// Virtual keys to machine keys, and the translation by modifier level.
#include "keys/key_map.h"

#include "core/charset.h"
#include "core/machine.h"
#include "keys/key_tables.h"

namespace quillon {
namespace {

constexpr unsigned char CHAR_BACKSLASH = 0x98;

enum VirtualKey : int {
    VK_TAB = 9,
    VK_ENTER = 13,
    VK_PAUSE = 19,
    VK_ESCAPE = 27,
    VK_NUMPAD_0 = 96,
    VK_NUMPAD_9 = 105,
    VK_F1 = 112,
    VK_F2 = 113,
    VK_F9 = 120,
    VK_F10 = 121,
    VK_F11 = 122,
    VK_F12 = 123,
    VK_SEMICOLON = 187, ///< ";" and "+"
    VK_YEN = 220,
    VK_BACKSLASH = 226,
};

/// Keys that type one code of their own in both modes.
struct FixedKey {
    int virtual_key;
    unsigned char code;
};

// clang-format off
constexpr FixedKey FIXED_KEYS[] = {
    {8, KEY_BACKSPACE},  {35, KEY_ANSWER},          {VIRTUAL_KEY_HOME, KEY_CLEAR}, {37, KEY_LEFT}, {VIRTUAL_KEY_UP, KEY_UP},
    {39, KEY_RIGHT},     {40, KEY_DOWN},            {45, KEY_INSERT},              {46, KEY_DELETE},
    {106, '*'},          {107, '+'},                {109, '-'},                    {110, '.'},     {111, '/'},
    {118, CHAR_EXPONENT}, {119, CHAR_PI}, // F7 and F8
};

/// Punctuation keys of machine mode: they are other keys of the pocket computer's.
constexpr FixedKey MACHINE_KEYS[] = {
    {188, ' '}, {189, '-'}, {190, '='}, {191, CHAR_EXPONENT}, {222, '^'},
};

/// Virtual keys beyond 127 and what is printed on them.
constexpr FixedKey ASCII_KEYS[] = {
    {186, ':'}, {187, ';'}, {188, ','}, {189, '-'}, {190, '.'}, {191, '/'}, {192, '@'}, {219, '['}, {221, ']'}, {222, '^'},
    // These keep their codes until the translation.
    {VK_YEN, VK_YEN}, {VK_BACKSLASH, VK_BACKSLASH}, {CHAR_PI, CHAR_PI}, {CHAR_EXPONENT, CHAR_EXPONENT},
};

// clang-format on

/// Function keys that stand for a command of the host.
struct CommandKey {
    int virtual_key;
    HostCommand command;
};

constexpr CommandKey COMMAND_KEYS[] = {
    {114, COMMAND_OVERDRIVE},
    {115, COMMAND_RELOAD},
    {116, COMMAND_RUN},
    {117, COMMAND_LINE},
};

template <std::size_t N>
unsigned char find_code(const FixedKey (&keys)[N], int virtual_key) {
    for (const FixedKey& key : keys) {
        if (key.virtual_key == virtual_key)
            return key.code;
    }
    return 0;
}

void change_zoom(Machine& m, int step) {
    const int zoom = m.zoom + step;
    if (zoom >= 1 && zoom <= ZOOM_MAX)
        m.zoom = zoom;
    m.host.resize_window();
}

/// Keys that act and type nothing. False when the key is none of these.
bool act_on_key(Machine& m, int virtual_key, bool auto_repeat) {
    for (const CommandKey& key : COMMAND_KEYS) {
        if (key.virtual_key == virtual_key) {
            m.host.run_command(key.command);
            return true;
        }
    }
    switch (virtual_key) {
    case VK_TAB: m.trace_step_request = m.trace_mode != 0 ? 1 : m.trace_step_request; return true;
    case VK_ENTER: m.enter_request = auto_repeat ? m.enter_request : 1; return true;
    case VK_PAUSE:
    case VK_ESCAPE:
        if (m.run_state != STATE_COMMAND)
            m.host.run_command(COMMAND_STOP);
        return true;
    case VK_F1: change_zoom(m, -1); return true;
    case VK_F2: change_zoom(m, 1); return true;
    case VK_F9: m.host.write_dump(); return true;
    case VK_F12: m.host.take_snapshot(); return true;
    case VK_F10:
    case VK_F11: return true;
    default: return false;
    }
}

/// The code of a key that types, 0 for none.
unsigned char typed_code(const Machine& m, int virtual_key) {
    if (virtual_key >= VK_NUMPAD_0 && virtual_key <= VK_NUMPAD_9)
        return static_cast<unsigned char>('0' + virtual_key - VK_NUMPAD_0);
    if (const unsigned char code = find_code(FIXED_KEYS, virtual_key))
        return code;
    if (m.ascii_mode == 0 && virtual_key > 127)
        return find_code(MACHINE_KEYS, virtual_key);
    if (virtual_key > 127)
        return find_code(ASCII_KEYS, virtual_key);
    return virtual_key >= ' ' ? static_cast<unsigned char>(virtual_key) : 0;
}

int modifier_level(const Machine& m) {
    if (m.alt_flag != 0)
        return m.ctrl_flag == 0 ? LEVEL_ALT : LEVEL_NONE;
    return m.shift_flag + 2 * m.ctrl_flag;
}

/// Replaces the pending key by what it types at the current level. A key without a row stays as it is.
void translate_key(Machine& m) {
    const int level = modifier_level(m);
    const auto rows = m.ascii_mode != 0 ? ascii_key_rows() : machine_key_rows();
    for (const KeyRow& row : rows) {
        if (level != LEVEL_NONE && row.key == as_byte(m.key_string[0])) {
            m.key_string = row.texts[level - 1];
            break;
        }
    }
    if (as_byte(m.key_string[0]) == VK_YEN)
        m.key_string.set(0, '\\');
    else if (as_byte(m.key_string[0]) == VK_BACKSLASH)
        m.key_string.set(0, static_cast<char>(CHAR_BACKSLASH));
}

void set_key(Machine& m, unsigned char code) {
    m.key_string.clear();
    if (code != 0)
        m.key_string.push_back(static_cast<char>(code));
}

} // namespace

bool acts_at_once(int virtual_key) {
    return virtual_key == VK_TAB || virtual_key == VK_PAUSE || virtual_key == VK_ESCAPE ||
           (virtual_key >= VK_F1 && virtual_key <= VK_F12 && find_code(FIXED_KEYS, virtual_key) == 0);
}

void on_key_down(Machine& m, int virtual_key, bool auto_repeat) {
    m.key_string.clear();
    if (act_on_key(m, virtual_key, auto_repeat))
        return;
    const unsigned char code = typed_code(m, virtual_key);
    set_key(m, code);
    m.held_key = code != 0 && virtual_key != VK_SEMICOLON ? virtual_key : 0;
    if (code != 0)
        translate_key(m);
}

void on_sys_key_down(Machine& m, int virtual_key) {
    if (m.ascii_mode != 0)
        return;
    const bool types = virtual_key >= ' ' && virtual_key <= 127;
    set_key(m, types ? static_cast<unsigned char>(virtual_key) : 0);
    m.held_key = types ? virtual_key : 0;
    if (types)
        translate_key(m);
}

void on_character(Machine& m, char character, int held_code) {
    const char typed = m.shift_flag != 0 ? to_lower(character) : to_upper(character);
    set_key(m, as_byte(typed));
    m.held_key = held_code;
}

bool is_key_unread(const Machine& m) {
    const bool typing = m.run_state == STATE_INPUT || m.run_state == STATE_COMMAND;
    return typing && !m.key_string.empty() && m.key_string.view() != m.prev_key_string.view();
}

} // namespace quillon
