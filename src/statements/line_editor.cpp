// SPDX-License-Identifier: MIT
// Editing keys, typed text, history and clipboard.
#include "statements/line_editor.h"

#include "core/charset.h"
#include "core/display_line.h"
#include "core/machine.h"
#include "core/number_format.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

using EntryText = BoundedText<127>;

/// What a key turns into before it is applied: an editing key, typed text, or nothing.
using KeyText = BoundedText<127>;

std::size_t position(const Machine& m) { return static_cast<std::size_t>(std::max(m.screen.display_cursor, 0)); }

void clear_entry(Machine& m) {
    m.entry.entry_line.text.clear();
    m.screen.display_cursor = 0;
}

/// The last result as it would be printed.
KeyText recall_answer(Machine& m) { return shown_number(m, m.entry.last_result); }

/// Puts history line `index` in the place of the entry.
KeyText recall_history(Machine& m, int index) {
    m.entry.history_index = index;
    clear_display(m);
    clear_entry(m);
    return m.entry.history[static_cast<std::size_t>(index)];
}

KeyText recall_older(Machine& m) {
    const int older = m.entry.history_index + 1;
    const bool exists = older < HISTORY_SIZE && !m.entry.history[static_cast<std::size_t>(older)].empty();
    return exists ? recall_history(m, older) : KeyText();
}

KeyText recall_newer(Machine& m) {
    return m.entry.history_index < 1 ? KeyText() : recall_history(m, m.entry.history_index - 1);
}

/// The clipboard's text up to its first control or special character.
KeyText paste(Machine& m) {
    KeyText text(m.around->host.paste_text());
    const std::string_view view = text;
    const auto* end =
        std::find_if(view.begin(), view.end(), [](char c) { return as_byte(c) < ' ' || as_byte(c) > 0x7F; });
    text.shorten(static_cast<std::size_t>(end - view.begin()));
    return text;
}

/// The keys that become text, or that act at once and leave no key.
KeyText resolve_key(Machine& m) {
    switch (static_cast<MachineKey>(m.keys.key_string[0])) {
    case KEY_ANSWER: return recall_answer(m);
    case KEY_UP: return recall_older(m);
    case KEY_DOWN: return recall_newer(m);
    case KEY_PASTE: return paste(m);
    case KEY_COPY: m.around->host.copy_text(m.entry.entry_line.text); return {};
    default: return KeyText(m.keys.key_string);
    }
}

void move_left(Machine& m) {
    if (!m.keys.shift_flag && m.screen.display_cursor > 0)
        --m.screen.display_cursor;
}

void move_right(Machine& m) {
    if (!m.keys.shift_flag && position(m) < m.entry.entry_line.text.size() && position(m) < EntryText::capacity())
        ++m.screen.display_cursor;
}

void delete_before(Machine& m) {
    if (m.screen.display_cursor == 0)
        return;
    --m.screen.display_cursor;
    m.entry.entry_line.text.erase(position(m));
}

/// Writes over the entry from the cursor on. A minus sign behind the exponent mark becomes part of it.
void type_text(Machine& m, std::string_view text) {
    EntryText& entry = m.entry.entry_line.text;
    const std::size_t at = position(m);
    if (text == "-" && at > 0 && as_byte(entry[at - 1]) == CHAR_EXPONENT) {
        entry.set(at - 1, static_cast<char>(CHAR_NEGATIVE_EXPONENT));
        return;
    }
    for (const char c : text) {
        const std::size_t column = position(m);
        if (column >= EntryText::capacity())
            return;
        if (column < entry.size())
            entry.set(column, c);
        else
            entry.push_back(c);
        ++m.screen.display_cursor;
    }
}

void apply_key(Machine& m, const KeyText& key) {
    switch (static_cast<MachineKey>(key[0])) {
    case KEY_LEFT: move_left(m); break;
    case KEY_RIGHT: move_right(m); break;
    case KEY_DELETE: m.entry.entry_line.text.erase(position(m)); break;
    case KEY_BACKSPACE: delete_before(m); break;
    case KEY_INSERT: m.entry.entry_line.text.insert(position(m), ' '); break;
    case KEY_CLEAR:
        clear_entry(m);
        m.entry.history_index = -1;
        break;
    default: type_text(m, key);
    }
    m.screen.cursor_visible = true;
    m.screen.blink_counter = 0;
}

void draw_entry(Machine& m) {
    clear_display(m);
    const std::string_view text = m.entry.entry_line.text;
    std::copy(text.begin(), text.end(), m.screen.display_line.begin());
    if (m.screen.cursor_visible)
        m.screen.display_line[position(m)] = '_';
}

} // namespace

void edit_line(Machine& m) {
    const bool held = m.keys.key_string.view() == m.entry.prev_key_string.view();
    const KeyText key = held ? KeyText() : resolve_key(m);
    if (!key.empty())
        apply_key(m, key);
    draw_entry(m);
    m.entry.prev_key_string = m.keys.key_string;
}

} // namespace quillon
