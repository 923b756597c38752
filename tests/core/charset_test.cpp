// Escapes of special characters, and how the character set looks outside the machine.
#include "core/charset.h"

#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace quillon::testing {
namespace {

/// What `read_char` yields for the first character of a text, and how many bytes it passes.
std::pair<int, int> read_first(std::string_view text) {
    const ExactText line(text);
    const char* at = line.begin();
    const int byte = read_char(at);
    return {byte, static_cast<int>(at - line.begin())};
}

std::string escaped_byte(int byte) {
    char out[8];
    return escape_text(std::string(1, static_cast<char>(byte)), out, sizeof out);
}

/// "87 π": what an escape stands for, in any letter case.
std::string meaning_of(const std::string& escape) {
    const int byte = read_first(escape).first;
    const char a = escape[1];
    const char b = escape[2];
    for (const std::string& text : {std::string{'\\', a, b, 'x'}, std::string{'\\', to_upper(a), b, 'x'},
                                    std::string{'\\', a, to_upper(b)}, std::string{'\\', to_upper(a), to_upper(b)}})
        EXPECT_EQ(read_first(text), std::pair(byte, 3)) << text;
    if (byte >= 0x80) { // the others show as they are
        EXPECT_EQ(escape_letters(static_cast<unsigned char>(byte)), escape.substr(1));
        EXPECT_EQ(escaped_byte(byte), escape);
    }
    char hex[8];
    std::snprintf(hex, sizeof hex, "%02x ", byte);
    return hex + std::string(unicode_of(static_cast<unsigned char>(byte)));
}

TEST(Charset, HasEscapesAndTheLooksOfTheFont) {
    std::string all;
    std::string looks;
    std::string special;
    expect_cases("core/charset.txt", [&](const FileCase& row) {
        special += static_cast<char>(read_first(row.input).first);
        return meaning_of(row.input);
    });
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        all += c;
        looks += unicode_of(as_byte(c));
        if (special.find(c) != std::string::npos)
            continue;
        if (byte >= 0x80) {
            EXPECT_EQ(escaped_byte(byte), "?") << byte;
        }
        const bool printable = byte >= 0x20 && byte < 0x7F;
        const bool blank = byte == 0x99 || byte == 0x9A;
        const std::string look = c == '\\'      ? "¥"
                                 : byte == 0x7F ? "◀"
                                 : printable    ? std::string(1, c)
                                 : blank        ? " "
                                                : "█";
        EXPECT_EQ(unicode_of(as_byte(c)), look) << byte;
    }
    EXPECT_EQ(to_unicode(all), looks);
}

TEST(Charset, EdgesOfEscapes) {
    struct Row {
        const char* text;
        int byte;
        int passed;
    };
    const Row rows[] = {
        {"A", 'A', 1},       {"\xFF", 0xFF, 1},       {"\\\\pi", '\\', 2},     {"\\\"", '"', 2},
        {"\\", '\\', 1},     {"\\\n", '\\', 1},       {"\\p", '\\', 2},        {"\\p\n", '\\', 2},
        {"\\p\"x", '\\', 3}, {"\\99", BAD_ESCAPE, 2}, {"\\9a", BAD_ESCAPE, 2}, {"\\ pi", BAD_ESCAPE, 2},
    };
    for (const Row& row : rows)
        EXPECT_EQ(read_first(row.text), std::pair(row.byte, row.passed)) << row.text;
    EXPECT_EQ(read_first("").second, 0);
    EXPECT_EQ(read_first("\nA").second, 0);
}

TEST(Charset, EscapedTextsHoldWholeEscapesOnly) {
    const char* const by_size[] = {"", "", "A", "A", "A", "A\\pi", "A\\piB", "A\\piB", "A\\piB"};
    for (std::size_t size = 1; size < std::size(by_size); ++size) {
        const std::unique_ptr<char[]> out = std::make_unique<char[]>(size);
        EXPECT_STREQ(escape_text("A\207B", out.get(), size), by_size[size]) << size;
    }
}

} // namespace
} // namespace quillon::testing
