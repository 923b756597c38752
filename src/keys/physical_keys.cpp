// SPDX-License-Identifier: MIT
// The table of places.
#include "keys/physical_keys.h"

namespace quillon {
namespace {

struct Place {
    std::string_view name;
    int scan_code;
    int virtual_key;
};

struct NamedKey {
    std::string_view name;
    int virtual_key;
};

// clang-format off
/// The keys that write. On a Japanese keyboard "@" and "[" are right of P, ";", ":" and "]" right of L, and a key left of
/// Backspace and one left of the right Shift have no place on others; the key beside the left Shift, which it does not
/// have, counts as the latter.
constexpr Place MAIN_BLOCK[] = {
    {"Digit1", 2, '1'},                  {"Digit2", 3, '2'},              {"Digit3", 4, '3'},         {"Digit4", 5, '4'},
    {"Digit5", 6, '5'},                  {"Digit6", 7, '6'},              {"Digit7", 8, '7'},         {"Digit8", 9, '8'},
    {"Digit9", 10, '9'},                 {"Digit0", 11, '0'},             {"Minus", 12, VK_MINUS},    {"Equal", 13, VK_CARET},
    {"KeyQ", 16, 'Q'},                   {"KeyW", 17, 'W'},               {"KeyE", 18, 'E'},          {"KeyR", 19, 'R'},
    {"KeyT", 20, 'T'},                   {"KeyY", 21, 'Y'},               {"KeyU", 22, 'U'},          {"KeyI", 23, 'I'},
    {"KeyO", 24, 'O'},                   {"KeyP", 25, 'P'},               {"BracketLeft", 26, VK_AT}, {"BracketRight", 27, VK_OPEN_BRACKET},
    {"KeyA", 30, 'A'},                   {"KeyS", 31, 'S'},               {"KeyD", 32, 'D'},          {"KeyF", 33, 'F'},
    {"KeyG", 34, 'G'},                   {"KeyH", 35, 'H'},               {"KeyJ", 36, 'J'},          {"KeyK", 37, 'K'},
    {"KeyL", 38, 'L'},                   {"Semicolon", 39, VK_SEMICOLON}, {"Quote", 40, VK_COLON},    {"Backquote", 41, VK_NONE},
    {"Backslash", 43, VK_CLOSE_BRACKET}, {"KeyZ", 44, 'Z'},               {"KeyX", 45, 'X'},          {"KeyC", 46, 'C'},
    {"KeyV", 47, 'V'},                   {"KeyB", 48, 'B'},               {"KeyN", 49, 'N'},          {"KeyM", 50, 'M'},
    {"Comma", 51, VK_COMMA},             {"Period", 52, VK_PERIOD},       {"Slash", 53, VK_SLASH},    {"Space", 57, VK_SPACE},
    {"IntlBackslash", 86, VK_BACKSLASH}, {"IntlRo", 89, VK_BACKSLASH},    {"IntlYen", 124, VK_YEN},
};

/// The other keys, which are the same everywhere.
constexpr NamedKey OTHER_KEYS[] = {
    {"Backspace", VK_BACKSPACE},         {"Tab", VK_TAB},                 {"Enter", VK_ENTER},
    {"NumpadEnter", VK_ENTER},           {"Pause", VK_PAUSE},             {"Escape", VK_ESCAPE},
    {"End", VK_END},                     {"Home", VK_HOME},               {"ArrowLeft", VK_LEFT},
    {"ArrowUp", VK_UP},                  {"ArrowRight", VK_RIGHT},        {"ArrowDown", VK_DOWN},
    {"Insert", VK_INSERT},               {"Delete", VK_DELETE},           {"Numpad0", VK_PAD_0 + 0},
    {"Numpad1", VK_PAD_0 + 1},           {"Numpad2", VK_PAD_0 + 2},       {"Numpad3", VK_PAD_0 + 3},
    {"Numpad4", VK_PAD_0 + 4},           {"Numpad5", VK_PAD_0 + 5},       {"Numpad6", VK_PAD_0 + 6},
    {"Numpad7", VK_PAD_0 + 7},           {"Numpad8", VK_PAD_0 + 8},       {"Numpad9", VK_PAD_0 + 9},
    {"NumpadMultiply", VK_PAD_MULTIPLY}, {"NumpadAdd", VK_PAD_ADD},       {"NumpadSubtract", VK_PAD_SUBTRACT},
    {"NumpadDecimal", VK_PAD_DECIMAL},   {"NumpadComma", VK_PAD_DECIMAL}, {"NumpadDivide", VK_PAD_DIVIDE},
    {"F1", VK_F1},                       {"F2", VK_F2},                   {"F3", VK_F3},
    {"F4", VK_F4},                       {"F5", VK_F5},                   {"F6", VK_F6},
    {"F7", VK_F7},                       {"F8", VK_F8},                   {"F9", VK_F9},
    {"F10", VK_F10},                     {"F11", VK_F11},                 {"F12", VK_F12},
};
// clang-format on

} // namespace

int virtual_key_at_place(std::string_view name) {
    for (const Place& place : MAIN_BLOCK) {
        if (place.name == name)
            return place.virtual_key;
    }
    for (const NamedKey& key : OTHER_KEYS) {
        if (key.name == name)
            return key.virtual_key;
    }
    return VK_NONE;
}

std::optional<int> virtual_key_of_scan_code(int scan_code) {
    for (const Place& place : MAIN_BLOCK) {
        if (place.scan_code == scan_code)
            return place.virtual_key;
    }
    return std::nullopt;
}

} // namespace quillon
