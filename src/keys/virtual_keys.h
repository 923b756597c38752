// SPDX-License-Identifier: MIT
// Virtual keys: the numbers under which the keys of a PC keyboard go down and come up. Letters and digits have the
// codes of their capitals; the rest is named here. The numbers are those of the protocol and of the settings' key
// tables.
#pragma once

namespace quillon {

enum VirtualKey : int {
    VK_NONE = 0,
    VK_BACKSPACE = 8,
    VK_TAB = 9,
    VK_ENTER = 13,
    VK_PAUSE = 19,
    VK_ESCAPE = 27,
    VK_SPACE = 32,
    VK_END = 35,
    VK_HOME = 36,
    VK_LEFT = 37,
    VK_UP = 38,
    VK_RIGHT = 39,
    VK_DOWN = 40,
    VK_INSERT = 45,
    VK_DELETE = 46,
    VK_PAD_0 = 96, ///< the keypad's digits follow
    VK_PAD_9 = 105,
    VK_PAD_MULTIPLY = 106,
    VK_PAD_ADD = 107,
    VK_PAD_SUBTRACT = 109,
    VK_PAD_DECIMAL = 110,
    VK_PAD_DIVIDE = 111,
    VK_F1 = 112,
    VK_F2 = 113,
    VK_F3 = 114,
    VK_F4 = 115,
    VK_F5 = 116,
    VK_F6 = 117,
    VK_F7 = 118,
    VK_F8 = 119,
    VK_F9 = 120,
    VK_F10 = 121,
    VK_F11 = 122,
    VK_F12 = 123,
    // By what is printed on a Japanese keyboard.
    VK_COLON = 186,
    VK_SEMICOLON = 187,
    VK_COMMA = 188,
    VK_MINUS = 189,
    VK_PERIOD = 190,
    VK_SLASH = 191,
    VK_AT = 192,
    VK_OPEN_BRACKET = 219,
    VK_YEN = 220,
    VK_CLOSE_BRACKET = 221,
    VK_CARET = 222,
    VK_BACKSLASH = 226,
};

/// Codes from here on stand for keys that hand over a character, where no virtual key stands for them.
constexpr int CHARACTER_KEY_BASE = 256;

} // namespace quillon
