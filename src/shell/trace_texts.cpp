// SPDX-License-Identifier: MIT
// Describing the machine for the trace windows.
#include "shell/trace_texts.h"

#include "core/charset.h"
#include "core/numbers.h"
#include "core/program_text.h"
#include "core/variables.h"
#include "shell/utf8.h"

#include <cstdio>
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
    return cell.kind == CELL_STRING ? quoted(cell.text) : std::string(format_general(cell.number, DIGITS).view());
}

std::string listing_part(std::string_view text, TextDecoder decode) {
    return is_valid_utf8(text) ? std::string(text) : decode(text);
}

/// Where the machine reads on in the text of a line: after the token before. The end when it is somewhere else.
std::size_t next_position(const Machine& m, const ProgramLine& line, std::string_view text) {
    const TokenIndex next = m.eval.next;
    if (next == line.tokens)
        return 0;
    if (next < line.tokens || next > static_cast<TokenIndex>(m.listing->tokens.size()))
        return text.size();
    const SourceOffset before = token_at(m, next - 1).begin - line.text;
    if (before < 0 || static_cast<std::size_t>(before) >= text.size())
        return text.size();
    return static_cast<std::size_t>(scan_token(text.data() + before).end - text.data());
}

/// The current line with its number, and the catalogue's marker before the character that is executed next.
std::string current_line_text(const Machine& m, TextDecoder decode) {
    constexpr std::string_view LINE_ENDS = "\r\n\x1A";
    const auto& lines = current_area(m).lines;
    const auto index = static_cast<std::size_t>(m.program.cur_line);
    if (index >= lines.size())
        return {};
    std::string_view line = line_text(m, m.program.cur_line);
    line = line.substr(0, line.find_first_of(LINE_ENDS));
    const std::size_t position = next_position(m, lines[index], line);
    return std::to_string(current_line_number(m)) + " " + listing_part(line.substr(0, position), decode) +
           lookup_message(m.around->catalogue, "DLG_TRACE", 20) + listing_part(line.substr(position), decode);
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

void refresh_trace_texts(TraceTexts& texts, const Machine& m, TextDecoder decode) {
    texts.last = texts.next;
    if (m.run.base_state != STATE_COMMAND)
        texts.next = current_line_text(m, decode);
    else
        texts.last = to_unicode(m.entry.entry_line.text);
    texts.dollar = quoted(m.variables[DOLLAR_CELL].text);
    for (std::size_t i = 0; i < texts.variables.size(); ++i) {
        if (m.variables[i].kind != CELL_UNASSIGNED)
            texts.variables[i] = cell_text(m.variables[i]);
    }
    texts.statement_kind = statement_kind_name(number_of(m.eval.stmt_kind));
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
        text += label + (variable.kind == CELL_UNASSIGNED ? std::string("---") : cell_text(variable)) + " ";
        if ((cell - TRACED_CELLS) % PER_LINE == PER_LINE - 1)
            text += "\r\n";
    }
    return text;
}

} // namespace quillon
