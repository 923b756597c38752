// Escapes of special characters, and how the character set looks outside the machine.
#include "core/charset.h"

#include "tests/support/evaluation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::testing {
namespace {

struct Escape {
    const char* letters;
    int byte;
};

constexpr Escape ESCAPES[] = {
    {"ua", 0x5E}, {"cs", 0x80}, {"le", 0x81}, {"ne", 0x82}, {"ge", 0x83}, {"la", 0x84}, {"da", 0x85}, {"ra", 0x86},
    {"pi", 0x87}, {"ci", 0x88}, {"sq", 0x89}, {"tr", 0x8A}, {"cr", 0x8B}, {"dv", 0x8C}, {"ex", 0x8D}, {"dt", 0x8E},
    {"dg", 0x8F}, {"sp", 0x90}, {"ht", 0x91}, {"di", 0x92}, {"cl", 0x93}, {"bx", 0x94}, {"sg", 0x95}, {"om", 0x96},
    {"mu", 0x97}, {"bs", 0x98}, {"h2", 0x9B}, {"em", 0x9C}, {"c2", 0x9D}, {"s2", 0x9E}, {"d2", 0x9F},
};

/// What `read_char` yields for the first character of a text, and how many bytes it passes.
std::pair<int, int> read_first(std::string_view text) {
    const ExactText line(text);
    const char* at = line.begin();
    const int byte = read_char(at);
    return {byte, static_cast<int>(at - line.begin())};
}

TEST(Charset, EscapesAreReadInAnyLetterCase) {
    for (const Escape& escape : ESCAPES) {
        const char a = escape.letters[0];
        const char b = escape.letters[1];
        for (const std::string& text : {std::string{'\\', a, b, 'x'}, std::string{'\\', to_upper(a), b, 'x'},
                                        std::string{'\\', a, to_upper(b)}, std::string{'\\', to_upper(a), to_upper(b)}})
            EXPECT_EQ(read_first(text), std::pair(escape.byte, 3)) << text;
    }
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

TEST(Charset, SpecialCharactersHaveTheirEscape) {
    std::string known(256, '\0');
    for (const Escape& escape : ESCAPES) {
        if (escape.byte >= 0x80) {
            EXPECT_EQ(escape_letters(static_cast<unsigned char>(escape.byte)), escape.letters);
            known[static_cast<std::size_t>(escape.byte)] = 1;
        }
    }
    for (int byte = 0x80; byte < 256; ++byte) {
        char out[8];
        const std::string text(1, static_cast<char>(byte));
        const std::string escaped = escape_text(text, out, sizeof out);
        if (known[static_cast<std::size_t>(byte)] == 0)
            EXPECT_EQ(escaped, "?") << byte;
        else
            EXPECT_EQ(read_first(escaped), std::pair(byte, 3));
    }
}

TEST(Charset, EscapedTextsHoldWholeEscapesOnly) {
    const char* const by_size[] = {"", "", "A", "A", "A", "A\\pi", "A\\piB", "A\\piB", "A\\piB"};
    for (std::size_t size = 1; size < std::size(by_size); ++size) {
        const std::unique_ptr<char[]> out = std::make_unique<char[]>(size);
        EXPECT_STREQ(escape_text("A\207B", out.get(), size), by_size[size]) << size;
    }
}

TEST(Charset, LooksLikeTheFontOutside) {
    std::vector<std::string> expected(256, "█");
    for (int byte = 0x20; byte < 0x7F; ++byte)
        expected[static_cast<std::size_t>(byte)] = static_cast<char>(byte);
    expected[0x5C] = "¥";
    expected[0x5E] = "↑";
    expected[0x7F] = "◀";
    const char* const special[] = {"_", "≤", "≠", "≥", "←", "↓", "→", "π", "○",  "□", "△", "×", "÷",  "ᴇ", "·", "°",
                                   "♠", "♥", "♦", "♣", "█", "Σ", "Ω", "μ", "\\", " ", " ", "♡", "ᴇ-", "♧", "♤", "♢"};
    for (std::size_t i = 0; i < std::size(special); ++i)
        expected[0x80 + i] = special[i];
    std::string all;
    std::string joined;
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(unicode_of(static_cast<unsigned char>(byte)), expected[static_cast<std::size_t>(byte)]) << byte;
        all += static_cast<char>(byte);
        joined += expected[static_cast<std::size_t>(byte)];
    }
    EXPECT_EQ(to_unicode(all), joined);
}

} // namespace
} // namespace quillon::testing
