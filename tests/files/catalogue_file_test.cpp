// SPDX-License-Identifier: MIT
// Catalogue files: their two encodings, with any converter that a C library may have, and their size. Shift-JIS in a
// listing that is traced.
#include "files/catalogue_file.h"

#include "files/shift_jis.h"
#include "shell/trace_texts.h"
#include "tests/files/failing_calls.h"
#include "tests/support/temporary_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace quillon::testing {
namespace {

std::string text_of(std::string_view file) { return lookup_message(decode_catalogue(file), "SYSTEM", 4); }

TEST(CatalogueFile, ReadsBothEncodings) {
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

TEST(CatalogueFile, ReadsShiftJisWithoutTheCodePage) {
    const std::pair<const char*, std::string> libraries[] = {{"one other name", "\u30A1\u30BD\\~\uFF71"},
                                                             {"none", "??\\~?"}};
    for (const auto& [names, expected] : libraries) {
        std::string text;
        const bool has_none = std::string_view(names) == "none";
        run_with_fault({1, EINVAL, has_none}, [&] { text = shift_jis_to_utf8("\x83\x40\x83\x5C\\~\xB1"); });
        EXPECT_EQ(text, expected) << names;
    }
}

TEST(CatalogueFile, ChoosesOneEncodingForTheWholeFile) {
    // The value alone would be valid UTF-8; another line shows that the file is Shift-JIS.
    EXPECT_EQ(text_of("; \x83\x40\n[SYSTEM]\nM_004=\xC3\xA9\n"), "\uFF83\uFF69");
    EXPECT_EQ(text_of("; \xC3\xA9\n[SYSTEM]\nM_004=\xC3\xA9\n"), "\u00E9");
}

TEST(CatalogueFile, CutsShiftJisByItsOwnBytes) {
    const std::string head = "[SYSTEM]\nM_004=", most(258, 'x');
    EXPECT_EQ(text_of(head + most + "\x83\x40y"), most);
    EXPECT_EQ(text_of(head + most.substr(1) + "\x83\x40y"), most.substr(1) + "\u30A1");
    EXPECT_EQ(text_of(head + "\xB1" + most.substr(1) + "\x83\x40y"), "\uFF71" + most.substr(1));
}

TEST(ShiftJis, OfAListingIsReadableInTheTrace) {
    for (const char* kana : {"\x83\x40", "\u30A1"}) {
        TestMachine t;
        t.start("B$=\"" + std::string(kana) + "\"");
        TraceTexts texts;
        refresh_trace_texts(texts, t.m, shift_jis_to_utf8);
        EXPECT_EQ(texts.next, "10  B$=\"\u30A1\"");
    }
}

TEST(CatalogueFile, ReadsFilesUpToAMegabyte) {
    const std::string text = "[SYSTEM]\nM_004=text\n";
    for (const std::size_t size : {0, 20, 1 << 20, (1 << 20) + 1}) {
        const TemporaryFile file(text.substr(0, size) + std::string(size - std::min<std::size_t>(size, 20), ';'));
        EXPECT_EQ(read_catalogue(file.path).has_value(), size <= 1 << 20) << size;
        EXPECT_FALSE(read_catalogue(file.path + ".missing"));
    }
    EXPECT_FALSE(read_catalogue("/"));
    EXPECT_FALSE(read_catalogue(""));
}

} // namespace
} // namespace quillon::testing
