// SPDX-License-Identifier: MIT
// The keys of the soft keyboard: what each of the 56 keys is on each of its six layers.
#pragma once

#include <array>
#include <string>

namespace quillon {

constexpr int SOFT_KEY_COLUMNS = 14;
constexpr int SOFT_KEY_ROWS = 4;
constexpr int SOFT_KEY_COUNT = SOFT_KEY_COLUMNS * SOFT_KEY_ROWS;
constexpr int SOFT_LAYER_COUNT = 6;

/// The double-width EXE key is two keys; this is its left half.
constexpr int SOFT_EXE_KEY = 54;

enum class SoftKeyKind {
    NONE = 0,      ///< no key
    CHARACTER = 1, ///< its text is typed, again and again while the key is held
    ONCE = 2,      ///< its text is typed once: keywords and some control codes
    SHIFT_LATCH = 3,
    FUNCTION_LATCH = 4,
    EXTENSION_LATCH = 5,
    CLOSE = 6, ///< closes the soft keyboard
    EXE = 7,
    BREAK = 8,
    AREA = 9, ///< selects the program area whose number (0 to 9) is the first byte of its text
};

struct SoftKey {
    std::array<char, 8> text{}; ///< at most 7 characters and a zero
    SoftKeyKind kind = SoftKeyKind::NONE;
    const char* legend = ""; ///< UTF-8; empty for what is typed, as the LCD shows it
    const char* name = "";   ///< where the legend is no word for it; else empty
};

/// The layer that the latches show (each 0 or 1): 0 none, 1 S, 2 F, 3 EXT, 4 EXT and S, 5 EXT and F. S and F
/// are never on together.
constexpr int soft_layer(int shift, int function, int extension) { return shift + 2 * function + 3 * extension; }

/// The key `index` (row x 14 + column) of a layer; a key of kind NONE when there is no such layer or key.
const SoftKey& soft_key(int layer, int index);

/// What is written on a key, in UTF-8: "AC", "SIN", "≦".
std::string soft_key_legend(const SoftKey& key);

/// What a key is called, for screen readers: "Clear", "SIN", "less or equal".
std::string soft_key_name(const SoftKey& key);

/// The number of that name in section SOFT_KEYS of a message catalogue: the code of what is typed, 200 and the kind of
/// other keys, 210 and the number of a program area. 0 for a key that is called by its legend, whatever the language.
int soft_key_name_number(const SoftKey& key);

} // namespace quillon
