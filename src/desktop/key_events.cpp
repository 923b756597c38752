// SPDX-License-Identifier: MIT
// Mapping keys.
#include "desktop/key_events.h"

#include "core/charset.h"
#include "keys/key_map.h"

#include <array>

namespace quillon {
namespace {

/// Keys that are the same on every keyboard, by their symbol.
struct SymbolKey {
    int qt_key;
    int virtual_key;
};

// clang-format off
constexpr SymbolKey SYMBOL_KEYS[] = {
    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},     {Qt::Key_Backtab, 9}, {Qt::Key_Return, 13}, {Qt::Key_Enter, 13},
    {Qt::Key_Pause, 19},    {Qt::Key_Escape, 27}, {Qt::Key_End, 35},    {Qt::Key_Home, 36},   {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},       {Qt::Key_Right, 39},  {Qt::Key_Down, 40},   {Qt::Key_Insert, 45}, {Qt::Key_Delete, 46},
    {Qt::Key_F1, 112},      {Qt::Key_F2, 113},    {Qt::Key_F3, 114},    {Qt::Key_F4, 115},    {Qt::Key_F5, 116},
    {Qt::Key_F6, 117},      {Qt::Key_F7, 118},    {Qt::Key_F8, 119},    {Qt::Key_F9, 120},    {Qt::Key_F11, 122},
    {Qt::Key_F12, 123},
};

constexpr SymbolKey KEYPAD_KEYS[] = {
    {Qt::Key_0, 96},  {Qt::Key_1, 97},  {Qt::Key_2, 98},  {Qt::Key_3, 99},  {Qt::Key_4, 100}, {Qt::Key_5, 101},
    {Qt::Key_6, 102}, {Qt::Key_7, 103}, {Qt::Key_8, 104}, {Qt::Key_9, 105}, {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107}, {Qt::Key_Minus, 109}, {Qt::Key_Period, 110}, {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
};

/// The rows of the main keyboard by the kernel's key codes, with the virtual keys of a Japanese keyboard.
constexpr int SCAN_CODE_FIRST = 2;
constexpr std::array<std::uint8_t, 56> SCAN_CODE_KEYS = {
    '1', '2', '3', '4', '5', '6', '7', '8', '9', '0', 189, 222, 0, 0,         // 2-15:  1 to 0, "-", "^"
    'Q', 'W', 'E', 'R', 'T', 'Y', 'U', 'I', 'O', 'P', 192, 219, 0, 0,         // 16-29: Q to P, "@", "["
    'A', 'S', 'D', 'F', 'G', 'H', 'J', 'K', 'L', 187, 186, 0, 0, 221,         // 30-43: A to L, ";", ":", "]"
    'Z', 'X', 'C', 'V', 'B', 'N', 'M', 188, 190, 191, 0, 0, 0, ' ',           // 44-57: Z to M, ",", ".", "/", blank
};
// clang-format on
constexpr int SCAN_CODE_102ND = 86; // the key beside the left Shift
constexpr int SCAN_CODE_RO = 89;
constexpr int SCAN_CODE_YEN = 124;
constexpr int VIRTUAL_KEY_BACKSLASH = 226;
constexpr int VIRTUAL_KEY_YEN = 220;

/// X11 and Wayland count the kernel's key codes from 8.
constexpr int SCAN_CODE_OFFSET = 8;

template <std::size_t N>
int find_key(const SymbolKey (&keys)[N], int qt_key) {
    for (const SymbolKey& key : keys) {
        if (key.qt_key == qt_key)
            return key.virtual_key;
    }
    return 0;
}

int key_at_place(const QKeyEvent& event) {
    const int code = static_cast<int>(event.nativeScanCode()) - SCAN_CODE_OFFSET;
    if (code == SCAN_CODE_102ND || code == SCAN_CODE_RO)
        return VIRTUAL_KEY_BACKSLASH;
    if (code == SCAN_CODE_YEN)
        return VIRTUAL_KEY_YEN;
    const int index = code - SCAN_CODE_FIRST;
    if (index >= 0 && index < static_cast<int>(SCAN_CODE_KEYS.size()))
        return SCAN_CODE_KEYS[static_cast<std::size_t>(index)];
    return event.key() >= Qt::Key_Space && event.key() <= Qt::Key_AsciiTilde ? event.key() : 0;
}

int virtual_key_of(const QKeyEvent& event) {
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        if (const int key = find_key(KEYPAD_KEYS, event.key()))
            return key;
    }
    if (const int key = find_key(SYMBOL_KEYS, event.key()))
        return key;
    return key_at_place(event);
}

/// The dead keys whose own characters the machine has.
struct DeadKey {
    int qt_key;
    char character;
};

constexpr DeadKey DEAD_KEYS[] = {
    {Qt::Key_Dead_Grave, '`'},   {Qt::Key_Dead_Acute, '\''},    {Qt::Key_Dead_Circumflex, '^'},
    {Qt::Key_Dead_Tilde, '~'},   {Qt::Key_Dead_Diaeresis, '"'}, {Qt::Key_Dead_Abovering, '\x8F'}, // degrees
    {Qt::Key_Dead_Cedilla, ','},
};

char dead_character(int qt_key) {
    for (const DeadKey& key : DEAD_KEYS) {
        if (key.qt_key == qt_key)
            return key.character;
    }
    return '\0';
}

/// The machine's character that a key types; NUL when it types none that the machine has.
char typed_character(const QKeyEvent& event) {
    if (const char character = dead_character(event.key()))
        return character;
    const std::string text = from_unicode(event.text().toStdString());
    const bool one = text.size() == 1 && as_byte(text[0]) >= ' ';
    const bool known = one && (text[0] != '?' || event.text() == QLatin1String("?"));
    return known ? text[0] : '\0';
}

/// A code that stands for this key as long as it is held.
int held_code_of(const QKeyEvent& event) {
    const auto code = event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
    return CHARACTER_KEY_BASE + static_cast<int>(code % 0x10000);
}

/// Whether the key is handed over as a character: not the keypad's, which has codes of its own, and no shortcut.
bool types_character(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool chord = modifiers.testFlag(Qt::ControlModifier) != modifiers.testFlag(Qt::AltModifier);
    return !modifiers.testFlag(Qt::KeypadModifier) && !chord && find_key(SYMBOL_KEYS, event.key()) == 0;
}

} // namespace

std::optional<KeyEvent> key_down_from(const QKeyEvent& event, bool ascii_mode) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    KeyEvent result;
    result.auto_repeat = event.isAutoRepeat();
    result.modifiers = {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
                        modifiers.testFlag(Qt::AltModifier)};
    if (ascii_mode && types_character(event)) {
        result.kind = KeyEvent::Kind::CHARACTER;
        result.key = held_code_of(event);
        result.character = typed_character(event);
        return result.character == '\0' ? std::nullopt : std::optional(result);
    }
    result.key = virtual_key_of(event);
    const bool with_alt = result.modifiers.alt && !result.modifiers.ctrl;
    result.kind = with_alt ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN;
    return result.key == 0 ? std::nullopt : std::optional(result);
}

bool is_dead_key(const QKeyEvent& event) { return dead_character(event.key()) != '\0'; }

void follow_modifiers(Modifiers& modifiers, const QKeyEvent& event) {
    const bool down = event.type() == QEvent::KeyPress;
    switch (event.key()) {
    case Qt::Key_Shift: modifiers.shift = down; break;
    case Qt::Key_Control: modifiers.ctrl = down; break;
    case Qt::Key_Alt: modifiers.alt = down; break;
    default: break;
    }
}

} // namespace quillon
