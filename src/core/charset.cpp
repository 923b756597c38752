// SPDX-License-Identifier: MIT
// Escapes and Unicode of the machine's character set.
#include "core/charset.h"

#include <array>
#include <cstring>

namespace quillon {
namespace {

/// One special character: how listings write it and what it looks like outside.
struct SpecialCharacter {
    unsigned char code;
    std::string_view escape;
    std::string_view unicode;
};

// clang-format off
constexpr SpecialCharacter SPECIAL_CHARACTERS[] = {
    {0x5E, "ua", "↑"}, {0x80, "cs", "_"}, {0x81, "le", "≤"}, {0x82, "ne", "≠"}, {0x83, "ge", "≥"},
    {0x84, "la", "←"}, {0x85, "da", "↓"}, {0x86, "ra", "→"}, {0x87, "pi", "π"}, {0x88, "ci", "○"},
    {0x89, "sq", "□"}, {0x8A, "tr", "△"}, {0x8B, "cr", "×"}, {0x8C, "dv", "÷"}, {0x8D, "ex", "ᴇ"},
    {0x8E, "dt", "·"}, {0x8F, "dg", "°"}, {0x90, "sp", "♠"}, {0x91, "ht", "♥"}, {0x92, "di", "♦"},
    {0x93, "cl", "♣"}, {0x94, "bx", "█"}, {0x95, "sg", "Σ"}, {0x96, "om", "Ω"}, {0x97, "mu", "μ"},
    {0x98, "bs", "\\"}, {0x99, "", " "}, {0x9A, "", " "}, {0x9B, "h2", "♡"}, {0x9C, "em", "ᴇ-"},
    {0x9D, "c2", "♧"}, {0x9E, "s2", "♤"}, {0x9F, "d2", "♢"},
    // ASCII codes whose glyph is not the ASCII one.
    {0x5C, "", "¥"}, {0x7F, "", "◀"},
};
// clang-format on

constexpr std::string_view ASCII =
    " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~";

constexpr std::array<std::string_view, 256> build_unicode() {
    std::array<std::string_view, 256> table{};
    table.fill("█");
    for (std::size_t i = 0; i < ASCII.size(); ++i)
        table[0x20 + i] = ASCII.substr(i, 1);
    for (const SpecialCharacter& special : SPECIAL_CHARACTERS)
        table[special.code] = special.unicode;
    return table;
}

constexpr std::array<std::string_view, 256> UNICODE = build_unicode();

/// The code of a character beyond ASCII.
char code_of_unicode(std::string_view character) {
    for (const SpecialCharacter& special : SPECIAL_CHARACTERS) {
        if (special.unicode == character)
            return static_cast<char>(special.code);
    }
    return '?';
}

int escape_code(char first, char second) {
    for (const SpecialCharacter& special : SPECIAL_CHARACTERS) {
        if (!special.escape.empty() && special.escape[0] == first && special.escape[1] == second)
            return special.code;
    }
    return BAD_ESCAPE;
}

} // namespace

int read_char(const char*& text) {
    const char* p = text;
    if (*p != '\\') {
        text += *p != '\0' && *p != '\n' ? 1 : 0;
        return as_byte(*p);
    }
    const char first = to_lower(p[1]);
    if (first == '\0' || first == '\n') {
        text = p + 1;
        return '\\';
    }
    if (first == '\\' || first == '"') {
        text = p + 2;
        return first;
    }
    const char second = to_lower(p[2]);
    if (second == '\0' || second == '\n' || second == '"') {
        text = p + (second == '"' ? 3 : 2);
        return '\\';
    }
    const int code = escape_code(first, second);
    text = p + (code == BAD_ESCAPE ? 2 : 3);
    return code;
}

std::string_view escape_letters(unsigned char byte) {
    for (const SpecialCharacter& special : SPECIAL_CHARACTERS) {
        if (special.code == byte)
            return special.escape;
    }
    return {};
}

const char* escape_text(std::string_view text, char* out, std::size_t size) {
    std::size_t used = 0;
    for (const char c : text) {
        char piece[3] = {c, 0, 0};
        std::size_t length = 1;
        if (as_byte(c) >= 0x80) {
            const std::string_view letters = escape_letters(as_byte(c));
            piece[0] = letters.empty() ? '?' : '\\';
            length += letters.copy(piece + 1, 2);
        }
        if (used + length + 1 > size)
            break;
        std::memcpy(out + used, piece, length);
        used += length;
    }
    out[used] = '\0';
    return out;
}

std::string_view unicode_of(unsigned char byte) { return UNICODE[byte]; }

std::string to_unicode(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += unicode_of(as_byte(c));
    return out;
}

std::string from_unicode(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        std::size_t length = 1;
        while (length < text.size() && (as_byte(text[length]) & 0xC0) == 0x80)
            ++length;
        out += as_byte(text[0]) < 0x80 ? text[0] : code_of_unicode(text.substr(0, length));
        text.remove_prefix(length);
    }
    return out;
}

} // namespace quillon
