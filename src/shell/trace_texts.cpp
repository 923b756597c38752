// Describing the machine for the trace windows.
#include "shell/trace_texts.h"

#include "core/charset.h"
#include "core/numbers.h"
#include "shell/encoding.h"

#include <cstdio>
#include <functional>
#include <iterator>

namespace quillon {
namespace {

constexpr int LETTER_CELLS = 26;

/// The machine's characters with those that a PC keyboard lacks as listings write them.
std::string display_escapes(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        const std::string_view letters = escape_letters(as_byte(c));
        if (c == '\\')
            escaped += "\\\\";
        else if (!letters.empty() && as_byte(c) >= 0x80)
            escaped.append("\\").append(letters);
        else
            escaped += as_byte(c) < 0x80 ? std::string(1, c) : std::string(unicode_of(as_byte(c)));
    }
    return escaped;
}

std::string quoted(std::string_view text) {
    std::string result(1, '"');
    return result.append(display_escapes(text)).append(1, '"');
}

/// The value of a cell that has been assigned.
std::string cell_text(const Variable& cell) {
    constexpr int DIGITS = 6;
    return cell.kind == 1 ? quoted(cell.text) : std::string(format_general(cell.number, DIGITS).view());
}

std::string listing_part(std::string_view text) {
    return is_valid_utf8(text) ? std::string(text) : shift_jis_to_utf8(text);
}

/// The current line with its number, and the catalogue's marker before the character that is executed next.
std::string current_line_text(const Machine& m) {
    constexpr std::string_view LINE_ENDS = "\r\n\x1A";
    const char* start = m.areas[static_cast<std::size_t>(m.cur_area)].lines[static_cast<std::size_t>(m.cur_line)].text;
    if (start == nullptr)
        return {};
    std::string_view line(start);
    line = line.substr(0, line.find_first_of(LINE_ENDS));
    const std::less_equal<> not_behind;
    const bool inside = not_behind(start, m.scan_ptr) && not_behind(m.scan_ptr, start + line.size());
    const std::size_t position = inside ? static_cast<std::size_t>(m.scan_ptr - start) : line.size();
    return std::to_string(current_line_number(m)) + " " + listing_part(line.substr(0, position)) +
           lookup_message(m.catalogue, "DLG_TRACE", 20) + listing_part(line.substr(position));
}

/// By statement context; those that are none of these have no name.
constexpr const char* STATEMENT_KINDS[] = {"TOP", "VAL", "STR", "IF",  "GOTO", "RAN",
                                           "RND", "PRT", "FOR", "INP", "PRTS"};

const char* statement_kind_name(int kind) {
    return kind >= 0 && kind < static_cast<int>(std::size(STATEMENT_KINDS)) ? STATEMENT_KINDS[kind] : "";
}

} // namespace

void reset_trace_texts(TraceTexts& texts) {
    texts.last.clear();
    texts.next.clear();
    texts.dollar.clear();
    texts.variables.fill("-------");
}

void refresh_trace_texts(TraceTexts& texts, const Machine& m) {
    texts.last = texts.next;
    if (m.base_state != STATE_COMMAND)
        texts.next = current_line_text(m);
    else
        texts.last = to_unicode(m.entry_line.text);
    texts.dollar = quoted(m.variables[DOLLAR_CELL].text);
    for (std::size_t i = 0; i < texts.variables.size(); ++i) {
        if (m.variables[i].kind >= 0)
            texts.variables[i] = cell_text(m.variables[i]);
    }
    texts.statement_kind = statement_kind_name(m.stmt_kind);
}

std::string traced_cell_label(int cell) {
    constexpr int PLAIN_COLONS = 3;
    std::string label(1, static_cast<char>('A' + cell));
    if (cell >= LETTER_CELLS) {
        const int number = cell - LETTER_CELLS + 1;
        label.assign(number < 10 ? "_" : "").append(std::to_string(number));
    }
    return label.append(cell < PLAIN_COLONS ? ":" : "\uFF1A");
}

std::string extended_variables_text(const Machine& m) {
    constexpr int PER_LINE = 5;
    std::string text;
    for (int cell = TRACED_CELLS; cell < DOLLAR_CELL; ++cell) {
        const Variable& variable = m.variables[static_cast<std::size_t>(cell)];
        char label[16];
        std::snprintf(label, sizeof label, "%03d : ", cell - LETTER_CELLS + 1);
        text += label + (variable.kind < 0 ? std::string("---") : cell_text(variable)) + " ";
        if ((cell - TRACED_CELLS) % PER_LINE == PER_LINE - 1)
            text += "\r\n";
    }
    return text;
}

} // namespace quillon
