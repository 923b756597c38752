// SPDX-License-Identifier: MIT
// Mapping keys.
#include "desktop/key_events.h"

#include "core/charset.h"
#include "keys/physical_keys.h"

namespace quillon {
namespace {

/// Keys that are the same on every keyboard, by their symbol.
struct SymbolKey {
    int qt_key;
    int virtual_key;
};

// clang-format off
constexpr SymbolKey SYMBOL_KEYS[] = {
    {Qt::Key_Backspace, VK_BACKSPACE}, {Qt::Key_Tab, VK_TAB},       {Qt::Key_Backtab, VK_TAB},
    {Qt::Key_Return, VK_ENTER},        {Qt::Key_Enter, VK_ENTER},   {Qt::Key_Pause, VK_PAUSE},
    {Qt::Key_Escape, VK_ESCAPE},       {Qt::Key_End, VK_END},       {Qt::Key_Home, VK_HOME},
    {Qt::Key_Left, VK_LEFT},           {Qt::Key_Up, VK_UP},         {Qt::Key_Right, VK_RIGHT},
    {Qt::Key_Down, VK_DOWN},           {Qt::Key_Insert, VK_INSERT}, {Qt::Key_Delete, VK_DELETE},
    {Qt::Key_F1, VK_F1},               {Qt::Key_F2, VK_F2},         {Qt::Key_F3, VK_F3},
    {Qt::Key_F4, VK_F4},               {Qt::Key_F5, VK_F5},         {Qt::Key_F6, VK_F6},
    {Qt::Key_F7, VK_F7},               {Qt::Key_F8, VK_F8},         {Qt::Key_F9, VK_F9},
    {Qt::Key_F11, VK_F11},             {Qt::Key_F12, VK_F12},
};

constexpr SymbolKey KEYPAD_KEYS[] = {
    {Qt::Key_0, VK_PAD_0},            {Qt::Key_1, VK_PAD_0 + 1},           {Qt::Key_2, VK_PAD_0 + 2},
    {Qt::Key_3, VK_PAD_0 + 3},        {Qt::Key_4, VK_PAD_0 + 4},           {Qt::Key_5, VK_PAD_0 + 5},
    {Qt::Key_6, VK_PAD_0 + 6},        {Qt::Key_7, VK_PAD_0 + 7},           {Qt::Key_8, VK_PAD_0 + 8},
    {Qt::Key_9, VK_PAD_9},            {Qt::Key_Asterisk, VK_PAD_MULTIPLY}, {Qt::Key_Plus, VK_PAD_ADD},
    {Qt::Key_Minus, VK_PAD_SUBTRACT}, {Qt::Key_Period, VK_PAD_DECIMAL},    {Qt::Key_Comma, VK_PAD_DECIMAL},
    {Qt::Key_Slash, VK_PAD_DIVIDE},
};
// clang-format on

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
    if (const auto key = virtual_key_of_scan_code(static_cast<int>(event.nativeScanCode()) - SCAN_CODE_OFFSET))
        return *key;
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
