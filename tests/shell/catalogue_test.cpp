// SPDX-License-Identifier: MIT
// Message catalogues: keys and line breaks (catalogue.txt), lengths; what is UTF-8.
#include "shell/catalogue.h"
#include "shell/utf8.h"
#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

#include <regex>

namespace quillon::testing {
namespace {

const std::regex BREAK("\r\n");

std::string text_of(std::string_view file) { return lookup_message(parse_catalogue(file), "SYSTEM", 4); }

TEST(Catalogue, FindsTextsByTheirKey) {
    expect_cases("shell/catalogue.txt", [](const FileCase& row) {
        MessageCatalogue catalogue = parse_catalogue(row.input);
        std::string texts;
        for (const auto& [number, text] : catalogue.sections["SYSTEM"])
            texts += (texts.empty() ? "" : " ") + std::to_string(number) + ":" + std::regex_replace(text, BREAK, "/");
        return texts;
    });
}

TEST(Catalogue, CutsLongValues) {
    const std::string head = "[SYSTEM]\nM_004=";
    const std::string breaks(300, '@');
    EXPECT_EQ(text_of(head + std::string(259, 'x')).size(), 259U);
    EXPECT_EQ(text_of(head + std::string(260, 'x')).size(), 259U);
    EXPECT_EQ(text_of(head + breaks).size(), 2U * 259) << "counted before line breaks are made";
    EXPECT_EQ(text_of(head + R"(")" + std::string(300, 'x') + R"(")").size(), 259U);
    // Whole characters only: 258 bytes and a character of two or more.
    const std::string most(258, 'x');
    EXPECT_EQ(text_of(head + most + "\u00E9y"), most);
    EXPECT_EQ(text_of(head + most.substr(1) + "\u00E9y"), most.substr(1) + "\u00E9");
    EXPECT_EQ(text_of(head + most.substr(1) + "\u30A1y"), most.substr(1));
}

TEST(Catalogue, TakesDamagedFiles) {
    std::string bytes;
    for (int i = 0; i < 256 * 40; ++i)
        bytes += static_cast<char>((i * 11 + i / 256) % 256);
    EXPECT_EQ(text_of(bytes + "\n[SYSTEM]\nM_004=text"), "text");
    EXPECT_EQ(text_of(std::string("[SYSTEM]\nM_004=te\0xt\n", 22)), "te");
}

TEST(Encoding, TellsUtf8FromOtherBytes) {
    for (const char* text : {"", "abc", "\u00E9\u30A1\U0001F600", "\xEF\xBF\xBF", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(is_valid_utf8(text)) << text;
    for (const char* text : {"\x80", "a\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE3\x82",
                             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE3\x82\x41"})
        EXPECT_FALSE(is_valid_utf8(text)) << text;
}

} // namespace
} // namespace quillon::testing
