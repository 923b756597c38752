// SPDX-License-Identifier: MIT
// The texts of menus and toolbar by name: constants such as MENU_OPEN, made from window_texts.def.
#pragma once

namespace quillon {

/// Where a catalogue has a text, and what is shown (UTF-8) where it does not. "&" comes before an access key.
struct WindowText {
    const char* section = "";
    int number = -1; ///< -1 for a text that no catalogue has
    const char* built_in = "";
};

/// A text that is the same in every language.
constexpr WindowText fixed_text(const char* text) { return {"", -1, text}; }

constexpr WindowText NO_TEXT;

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define WINDOW_TEXT(name, section, number, built_in) constexpr WindowText name{section, number, built_in};
#include "shell/window_texts.def"
#undef WINDOW_TEXT

/// Those that a catalogue has.
constexpr WindowText WINDOW_TEXTS[] = {
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): likewise
#define WINDOW_TEXT(name, section, number, built_in) name,
#include "shell/window_texts.def"
#undef WINDOW_TEXT
};

} // namespace quillon
