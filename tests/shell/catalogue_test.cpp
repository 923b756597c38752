// Message catalogues: keys, line breaks, lengths and encodings.
#include "shell/catalogue.h"
#include "shell/encoding.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

std::string text_of(std::string_view file, int number = 4, std::string_view section = "SYSTEM") {
    return lookup_message(parse_catalogue(file), section, number);
}

TEST(Catalogue, FindsTextsByTheirKey) {
    struct Row {
        const char* file;
        int number;
        const char* text;
    };
    const Row rows[] = {
        {"[SYSTEM]\nM_004=text\n", 4, "text"},
        {"[SYSTEM]\nM_000=text\n", 0, "text"},
        {"[SYSTEM]\nM_123=text\n", 123, "text"},
        {"[SYSTEM]\nM_1234=text\n", 1234, "text"},
        {"[system]\nm_004=text\n", 4, "text"},
        {"[SYSTEM]\r\n M_004 = text \r\n", 4, "text"},
        {"[SYSTEM]\nM_004=\"  text \"\n", 4, "  text "},
        {"[SYSTEM]\nM_004=a=b;c\n", 4, "a=b;c"},
        {"[SYSTEM]\nM_004=one@two@@three@\n", 4, "one\r\ntwo\r\n\r\nthree\r\n"},
        {"[SYSTEM]\nM_004=one\nM_004=two\n", 4, "one"},
        {"[SYSTEM]\nM_004=\nM_004=two\n", 4, ""},
        {"[SYSTEM]\nM_004=one\n[X]\nM_004=x\n[System]\nM_004=two\nM_005=five\n", 4, "one"},
        {"[SYSTEM]\nM_004=one\n[SYSTEM]\nM_005=five\n", 5, ""},
        {"\xEF\xBB\xBF[SYSTEM]\nM_004=text\n", 4, "text"},
        // other forms of a key are other keys
        {"[SYSTEM]\nM_4=text\nM_04=text\nM_0004=text\nM004=text\nM_ 004=text\nM_-04=text\n", 4, ""},
        {"[SYSTEM]\nM_4294967300=text\nM_00x=text\nM_=text\n", 4, ""},
        {"[OTHER]\nM_004=text\n", 4, ""},
        {"M_004=text\n[SYSTEM]\n", 4, ""},
        {"", 4, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        EXPECT_EQ(text_of(row.file, row.number), row.text);
    }
}

TEST(Catalogue, ReadsBothEncodings) {
    struct Row {
        const char* value;
        const char* text;
    };
    const Row rows[] = {
        {"\xE3\x82\xA1@\xE2\x88\x9A", "\u30A1\r\n\u221A"}, // UTF-8
        {"\x83\x40@\x83\x41", "\u30A1\r\n\u30A2"},         // its second byte is "@" and breaks no line
        {"\x83\x40\x83\x40", "\u30A1\u30A1"},
        {"\xB1@\xB2", "\uFF71\r\n\uFF72"},      // half-width letters have one byte
        {"\x83\x5C~\\\xB1", "\u30BD~\\\uFF71"}, // backslash and tilde stay what they are
        {"\x95\x5C\x8E\xA6", "\u8868\u793A"},
        {"\x87\x40\xFA\x40", "\u2460\u2170"}, // the code page's own characters
        {"a\xFF\x62", "a?b"},
        {"\x83\x20\x63@", "? c\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(text_of("[SYSTEM]\nM_004=" + std::string(row.value) + "\n"), row.text);
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
    const TemporaryFile good("[SYSTEM]\nM_004=text\n");
    const TemporaryFile empty("");
    const TemporaryFile full("[SYSTEM]\nM_004=text\n" + std::string((1 << 20) - 20, ';'));
    const TemporaryFile large("[SYSTEM]\nM_004=text\n" + std::string((1 << 20) - 19, ';'));
    ASSERT_TRUE(read_catalogue(good.path));
    EXPECT_STREQ(lookup_message(*read_catalogue(good.path), "SYSTEM", 4), "text");
    ASSERT_TRUE(read_catalogue(empty.path));
    EXPECT_TRUE(read_catalogue(full.path));
    EXPECT_FALSE(read_catalogue(large.path));
    EXPECT_FALSE(read_catalogue(good.path + ".missing"));
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
