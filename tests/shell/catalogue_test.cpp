// SPDX-License-Identifier: MIT
// Message catalogues: keys and line breaks (catalogue.txt), lengths and encodings.
#include "shell/catalogue.h"
#include "shell/encoding.h"
#include "tests/shell/failing_calls.h"
#include "tests/support/cases_file.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cerrno>
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

TEST(Catalogue, ReadsBothEncodings) {
    const std::pair<const char*, const char*> rows[] = {
        {"\xE3\x82\xA1@\xE2\x88\x9A", "\u30A1\r\n\u221A"}, // UTF-8
        {"\x83\x40@\x83\x41", "\u30A1\r\n\u30A2"},         // its second byte is "@" and breaks no line
        {"\xB1@\xB2", "\uFF71\r\n\uFF72"},                 // half-width letters have one byte
        {"\x83\x5C~\\\xB1", "\u30BD~\\\uFF71"},            // backslash and tilde stay what they are
        {"\x87\x40\xFA\x40", "\u2460\u2170"},              // the code page's own characters
        {"a\xFF\x62", "a?b"},
        {"\x83\x20\x63@", "? c\r\n"},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(text_of("[SYSTEM]\nM_004=" + std::string(value) + "\n"), text);
}

TEST(Catalogue, ReadsShiftJisWithoutTheCodePage) {
    const std::pair<const char*, std::string> libraries[] = {{"one other name", "\u30A1\u30BD\\~\uFF71"},
                                                             {"none", "??\\~?"}};
    for (const auto& [names, expected] : libraries) {
        std::string text;
        const bool has_none = std::string_view(names) == "none";
        run_with_fault({1, EINVAL, has_none}, [&] { text = shift_jis_to_utf8("\x83\x40\x83\x5C\\~\xB1"); });
        EXPECT_EQ(text, expected) << names;
    }
}

TEST(Catalogue, ChoosesOneEncodingForTheWholeFile) {
    // The value alone would be valid UTF-8; another line shows that the file is Shift-JIS.
    EXPECT_EQ(text_of("; \x83\x40\n[SYSTEM]\nM_004=\xC3\xA9\n"), "\uFF83\uFF69");
    EXPECT_EQ(text_of("; \xC3\xA9\n[SYSTEM]\nM_004=\xC3\xA9\n"), "\u00E9");
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
    EXPECT_EQ(text_of(head + most + "\x83\x40y"), most);
    EXPECT_EQ(text_of(head + most.substr(1) + "\x83\x40y"), most.substr(1) + "\u30A1");
    EXPECT_EQ(text_of(head + "\xB1" + most.substr(1) + "\x83\x40y"), "\uFF71" + most.substr(1));
}

TEST(Catalogue, TakesDamagedFiles) {
    std::string bytes;
    for (int i = 0; i < 256 * 40; ++i)
        bytes += static_cast<char>((i * 11 + i / 256) % 256);
    EXPECT_EQ(text_of(bytes + "\n[SYSTEM]\nM_004=text"), "text");
    EXPECT_EQ(text_of(std::string("[SYSTEM]\nM_004=te\0xt\n", 22)), "te");
}

TEST(Catalogue, ReadsFilesUpToAMegabyte) {
    const std::string text = "[SYSTEM]\nM_004=text\n";
    for (const std::size_t size : {0, 20, 1 << 20, (1 << 20) + 1}) {
        const TemporaryFile file(text.substr(0, size) + std::string(size - std::min<std::size_t>(size, 20), ';'));
        EXPECT_EQ(read_catalogue(file.path).has_value(), size <= 1 << 20) << size;
        EXPECT_FALSE(read_catalogue(file.path + ".missing"));
    }
    EXPECT_FALSE(read_catalogue("/"));
    EXPECT_FALSE(read_catalogue(""));
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
