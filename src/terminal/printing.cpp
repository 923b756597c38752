// SPDX-License-Identifier: MIT
// Escaping control characters, and writing with the errors of the C library.
#include "terminal/printing.h"

#include "core/charset.h"
#include "shell/utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace quillon {
namespace {

constexpr int OUTPUT_FAILED = 2;

/// A control character: of ASCII, or of C1, as UTF-8 or as the byte that a terminal without UTF-8 obeys.
bool is_control(std::string_view character) {
    constexpr unsigned char C1_LEAD = 0xC2;
    const unsigned char byte = as_byte(character.back());
    const bool c1 = byte >= 0x80 && byte < 0xA0 && (character.size() == 1 || as_byte(character[0]) == C1_LEAD);
    return byte < ' ' || byte == 0x7F || c1;
}

void append_escapes(std::string& text, std::string_view bytes) {
    for (const char c : bytes) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned>(as_byte(c)));
        text += escape;
    }
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); i += length) {
        length = std::max<std::size_t>(utf8_length(text, i), 1);
        const std::string_view character = text.substr(i, length);
        if (is_control(character))
            append_escapes(shown, character);
        else
            shown += character;
    }
    return shown;
}

std::string printable_lines(std::string_view text) {
    constexpr std::string_view BREAK = "\r\n";
    std::string shown;
    for (std::size_t end = 0; (end = text.find(BREAK)) != std::string_view::npos;
         text.remove_prefix(end + BREAK.size())) {
        const bool has_own = end > 0 && text[end - 1] == '\r'; // the quoted end of a line may have one, too
        shown += printable(text.substr(0, has_own ? end - 1 : end)) + "\n";
    }
    return shown + printable(text);
}

std::string one_line(std::string_view text) {
    std::string line = printable_lines(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

void print_error(std::string_view text) { std::fprintf(stderr, "quillon-cli: %s\n", printable(text).c_str()); }

void print_load_fault(const std::string& path, std::string_view text) {
    print_error(path + ": the listing does not load: " + one_line(text));
}

bool write_output(std::string_view text) {
    if (std::ferror(stdout) != 0)
        return false;
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return true;
    if (errno == EPIPE)
        std::clearerr(stdout); // the reader has had enough: no failure
    else
        print_error(std::string("cannot write the output: ") + std::strerror(errno));
    return false;
}

int status_with_output(int status) { return std::ferror(stdout) != 0 ? OUTPUT_FAILED : status; }

} // namespace quillon
