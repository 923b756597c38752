// SPDX-License-Identifier: MIT
// Breaking lines by the widths that the C library knows.
#include "terminal/wrapped_text.h"

#include <algorithm>
#include <cwchar>

namespace quillon {
namespace {

struct Character {
    std::string_view bytes;
    int width = 0;
};

Character first_character(std::string_view text) {
    wchar_t wide = 0;
    std::mbstate_t state{};
    const std::size_t length = std::mbrtowc(&wide, text.data(), text.size(), &state);
    if (length == 0 || length > text.size()) // a NUL, or none in this encoding
        return {text.substr(0, 1), 1};
    return {text.substr(0, length), std::max(::wcwidth(wide), 0)};
}

/// A line that grows, and where it may be broken.
struct OpenLine {
    std::string text{};
    int width = 0;
    std::size_t break_at = 0; ///< 0 for nowhere
    int width_at_break = 0;
};

void append(OpenLine& line, const Character& character) {
    line.text += character.bytes;
    line.width += character.width;
    if (character.bytes != " " && character.width < 2)
        return;
    line.break_at = line.text.size();
    line.width_at_break = line.width;
}

/// Takes the first part off the line and returns it without the blanks at its end.
std::string break_line(OpenLine& line) {
    const bool anywhere = line.break_at == 0;
    std::string whole = line.text.substr(0, anywhere ? std::string::npos : line.break_at);
    whole.erase(whole.find_last_not_of(' ') + 1);
    line = {line.text.substr(anywhere ? line.text.size() : line.break_at),
            anywhere ? 0 : line.width - line.width_at_break};
    return whole;
}

} // namespace

std::vector<std::string> wrap_text(std::string_view text, int columns) {
    std::vector<std::string> lines;
    OpenLine line;
    while (!text.empty()) {
        const Character character = first_character(text);
        text.remove_prefix(character.bytes.size());
        const bool blank = character.bytes == " ";
        if (line.width + character.width > columns && !line.text.empty() && !blank)
            lines.push_back(break_line(line));
        append(line, character);
    }
    lines.push_back(line.text);
    return lines;
}

} // namespace quillon
