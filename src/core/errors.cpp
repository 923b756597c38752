// SPDX-License-Identifier: MIT
// Error texts: the detail with its location block, and the short text on the display line.
#include "core/errors.h"

#include "core/charset.h"
#include "core/display_line.h"
#include "core/program_text.h"
#include "core/run_control.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string_view>

namespace quillon {
namespace {

/// How long a UTF-8 text is without a character at its end that was cut.
std::size_t whole_size(std::string_view text) {
    constexpr std::size_t TAIL_MAX = 3; // bytes after the first one of a character
    std::size_t tail = 0;
    while (tail < std::min(TAIL_MAX, text.size()) && (as_byte(text[text.size() - tail - 1]) & 0xC0U) == 0x80)
        ++tail;
    if (tail == text.size())
        return text.size();
    const unsigned char lead = as_byte(text[text.size() - tail - 1]);
    const std::size_t whole_tail = lead >= 0xF0 ? 3 : (lead >= 0xE0 ? 2 : (lead >= 0xC0 ? 1 : 0));
    return tail < whole_tail ? text.size() - tail - 1 : text.size();
}

template <std::size_t N>
void append_arguments(BoundedText<N>& text, const char* format, std::va_list arguments) {
    char piece[2048];
    // The analyzer does not follow a list of arguments through a call.
    std::vsnprintf(piece, sizeof piece, format, arguments); // NOLINT(clang-analyzer-valist.Uninitialized)
    text.append(piece);
    text.shorten(whole_size(text)); // what is too long is cut, here or by the text
}

template <std::size_t N>
[[gnu::format(printf, 2, 3)]] void append_formatted(BoundedText<N>& text, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    append_arguments(text, format, arguments);
    va_end(arguments);
}

const char* text_of(const Machine& m, MessageId message) {
    return lookup_message(m.around->catalogue, message.section, message.number);
}

const char* heading(const Machine& m, int number) { return lookup_message(m.around->catalogue, "DLG_ERRINFO", number); }

/// The program text that the location block quotes: at most 32 characters from the current token on.
std::string_view quoted_source(const Machine& m) {
    constexpr std::size_t QUOTED_MAX = 32;
    const std::string_view source(source_at(m, m.eval.token_start));
    return source.substr(0, QUOTED_MAX);
}

void append_error_context(Machine& m) {
    constexpr const char* RULE = "------------------------";
    char source[128];
    auto& text = m.error.error_detail;
    append_formatted(text, "\r\n\r\n%s\r\n", heading(m, 1));
    append_formatted(text, "%s:%d\r\n", heading(m, 2), m.program.cur_area);
    append_formatted(text, "%s:%d\r\n", heading(m, 3), m.program.cur_line);
    append_formatted(text, "%s:\"%d\"\r\n\r\n", heading(m, 4), current_line_number(m));
    append_formatted(text, "%s\r\n%s\r\n::::", heading(m, 5), RULE);
    text.append(escape_text(quoted_source(m), source, sizeof source));
    append_formatted(text, "%s\r\n%s\r\n", heading(m, 6), RULE);
}

void finish_detail(Machine& m) {
    if (m.run.run_state != STATE_COMMAND)
        append_error_context(m);
}

/// The text for the display: ERRn with the position, or ERR2 alone for an entry.
BoundedText<31> error_text(const Machine& m, ErrorCode code) {
    char text[32] = "ERR2";
    if (code != ERROR_INPUT)
        std::snprintf(text, sizeof text, "ERR%d P%d-%d", -number_of(code) - 9, m.program.cur_area,
                      current_line_number(m));
    BoundedText<31> shown(text);
    constexpr std::size_t WITHOUT_POSITION = 4;
    if (m.run.run_state == STATE_COMMAND)
        shown.shorten(WITHOUT_POSITION);
    return shown;
}

} // namespace

void compose_detail(Machine& m, MessageId message) {
    m.error.error_detail.assign(text_of(m, message));
    finish_detail(m);
}

void compose_detail(Machine& m, MessageId message, const char* detail, ...) {
    m.error.error_detail.assign(text_of(m, message));
    std::va_list arguments;
    va_start(arguments, detail);
    append_arguments(m.error.error_detail, detail, arguments);
    va_end(arguments);
    finish_detail(m);
}

void compose_system_message(Machine& m, MessageId message) { m.error.system_message.assign(text_of(m, message)); }

void compose_system_message(Machine& m, MessageId message, const char* detail, ...) {
    m.error.system_message.assign(text_of(m, message));
    std::va_list arguments;
    va_start(arguments, detail);
    append_arguments(m.error.system_message, detail, arguments);
    va_end(arguments);
}

void enter_error(Machine& m, ErrorCode code) {
    show_text(m, error_text(m, code));
    enter_error_state(m, code);
}

void raise_error(Machine& m, ErrorCode code, MessageId message) {
    if (failed(m))
        return;
    compose_detail(m, message);
    enter_error(m, code);
}

void raise_error(Machine& m, ErrorCode code, MessageId message, const char* detail, ...) {
    if (failed(m))
        return;
    m.error.error_detail.assign(text_of(m, message));
    std::va_list arguments;
    va_start(arguments, detail);
    append_arguments(m.error.error_detail, detail, arguments);
    va_end(arguments);
    finish_detail(m);
    enter_error(m, code);
}

void raise_unknown_token(Machine& m) {
    raise_error(m, ERROR_SYNTAX, MESSAGE_UNKNOWN_TOKEN, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
}

void raise_token_error(Machine& m, MessageId message, TokenCode token) {
    raise_error(m, ERROR_SYNTAX, message, " : 0x%04x (TOKEN_ID)", token_id(token));
}

} // namespace quillon
