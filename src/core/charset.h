// SPDX-License-Identifier: MIT
// The machine's character set: 8-bit codes, printable from 0x20 to 0x9F. Listings write the special characters as
// backslash escapes; everything outside the machine sees them as Unicode.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

// Codes that mean something to the machine itself.
constexpr unsigned char CHAR_PI = 0x87;
constexpr unsigned char CHAR_BLOCK = 0x94;             ///< all dots on: what the display shows for unprintable codes
constexpr unsigned char CHAR_EXPONENT = 0x8D;          ///< exponent mark of a number, and the EX operator
constexpr unsigned char CHAR_NEGATIVE_EXPONENT = 0x9C; ///< exponent mark with its minus sign, and the EM operator
constexpr unsigned char CHAR_DEGREE = 0x8F;

/// What `read_char` yields for a backslash and two letters that are no escape.
constexpr int BAD_ESCAPE = 0xFF;

constexpr unsigned char as_byte(char c) { return static_cast<unsigned char>(c); }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
constexpr char to_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

/// The next character of a NUL-terminated line, decoding a backslash escape, and moves `text` behind it. The NUL or
/// line feed that ends the line is never passed. 0xFF for an unknown escape, of which two bytes are passed.
int read_char(const char*& text);

/// The two letters of the escape that stands for `byte` ("pi" for 0x87), empty when there is none.
std::string_view escape_letters(unsigned char byte);

/// Text with every byte from 0x80 on as its escape ("\pi"), or "?" where there is none. The rest stays as it is.
/// Writes at most `size` - 1 bytes and a NUL to `out`, whole escapes only; returns `out`.
const char* escape_text(std::string_view text, char* out, std::size_t size);

/// The character as UTF-8, as the display font draws it; a blank for the two empty glyphs, a full block for codes
/// that the font does not have. One code (0x9C) gives two characters.
std::string_view unicode_of(unsigned char byte);

/// A machine text as UTF-8.
std::string to_unicode(std::string_view text);

/// A UTF-8 text in the machine's characters; "?" for what it does not have and for bytes that are no UTF-8.
std::string from_unicode(std::string_view text);

} // namespace quillon
