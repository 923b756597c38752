// SPDX-License-Identifier: MIT
// The two key tables: what a key types at each modifier level.
#pragma once

#include <span>
#include <string_view>

namespace quillon {

/// The modifier levels at which a key types something else than itself.
enum KeyLevel : int { LEVEL_NONE = 0, LEVEL_SHIFT = 1, LEVEL_CTRL = 2, LEVEL_SHIFT_CTRL = 3, LEVEL_ALT = 4 };

/// What one key types: at most 15 characters a level, none for nothing.
struct KeyRow {
    unsigned char key;
    std::string_view texts[4]; ///< by level, from LEVEL_SHIFT on
};

/// The rows of machine mode, where the keyboard is the pocket computer's own.
std::span<const KeyRow> machine_key_rows();

/// The rows of ASCII mode, where keys type what is printed on a Japanese keyboard.
std::span<const KeyRow> ascii_key_rows();

} // namespace quillon
