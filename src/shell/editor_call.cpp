// SPDX-License-Identifier: MIT
// Taking the editor's command apart.
#include "shell/editor_call.h"

#include "core/errors.h"
#include "core/program.h"
#include "shell/commands.h"
#include "shell/paths.h"
#include "shell/simulator.h"

#include <algorithm>

namespace quillon {
namespace {

/// The words of a command: blanks separate them, except within quotes.
std::vector<std::string> split_words(std::string_view command) {
    std::vector<std::string> words;
    bool quoted = false;
    bool in_word = false;
    for (const char c : command) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ' ' && !quoted) {
            in_word = false;
            continue;
        }
        if (!in_word)
            words.emplace_back();
        in_word = true;
        if (c != '"')
            words.back() += c;
    }
    return words;
}

/// Puts the listing and the line in the places of %f and %l; true when the listing was wanted.
bool fill_in(std::string& word, const std::string& listing, int line) {
    std::string filled;
    bool has_listing = false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char mark = word[i] == '%' && i + 1 < word.size() ? word[i + 1] : '\0';
        if (mark == 'f')
            filled += listing;
        else if (mark == 'l')
            filled += std::to_string(line);
        else
            filled += word[i];
        has_listing = has_listing || mark == 'f';
        if (mark == 'f' || mark == 'l' || mark == '%')
            ++i;
    }
    word = std::move(filled);
    return has_listing;
}

} // namespace

std::optional<EditorCall> editor_call(Simulator& s, int line) {
    const std::string& editor = s.preferences.editor;
    const std::string& listing = s.preferences.last_file;
    if (editor.empty() || listing.empty()) {
        show_catalogue_message(s.machine, editor.empty() ? MESSAGE_NO_EDITOR : MESSAGE_NO_LISTING);
        return std::nullopt;
    }
    // There is no such program here: the system's own opener of text files stands for it.
    if (name_of(editor) == "notepad.exe")
        return EditorCall{"xdg-open", {listing}};
    if (s.disk.is_regular_file(editor))
        return EditorCall{editor, {listing}};
    EditorCall call;
    call.arguments = split_words(editor);
    if (call.arguments.empty() || call.arguments.front().empty()) {
        show_catalogue_message(s.machine, MESSAGE_NO_EDITOR);
        return std::nullopt;
    }
    bool has_listing = false;
    for (std::string& word : call.arguments) {
        if (word.starts_with("~/"))
            word.replace(0, 1, s.disk.home_folder());
        has_listing = fill_in(word, listing, line) || has_listing;
    }
    if (!has_listing)
        call.arguments.push_back(listing);
    call.program = call.arguments.front();
    call.arguments.erase(call.arguments.begin());
    return call;
}

std::optional<int> current_file_line(const Machine& m) {
    const auto& lines = current_area(m).lines;
    const int index = m.program.cur_line;
    if (index < 0 || static_cast<std::size_t>(index) >= lines.size())
        return std::nullopt;
    const auto begin = m.listing->text.begin();
    const auto ends_line = [](char c) { return c == '\0' || c == '\n'; };
    return 1 + static_cast<int>(std::count_if(begin, begin + lines[static_cast<std::size_t>(index)].text, ends_line));
}

} // namespace quillon
