// SPDX-License-Identifier: MIT
// Every error of the statements and functions: its code, its text in the catalogue and its detail; and the catalogues
// themselves, which have every text that is asked for and no other. (Jumps, loops, conditions and PRINT: in their own
// files. What an INPUT refuses: in print_input_test. Listings and expressions: in core.)
#include "core/charset.h"
#include "files/catalogue_file.h"
#include "keys/soft_keys.h"
#include "shell/settings.h"
#include "shell/utf8.h"
#include "shell/window_texts.h"
#include "tests/support/cases_file.h"
#include "tests/support/evaluation.h"
#include "tests/support/temporary_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

namespace quillon::testing {
namespace {

using Numbers = std::map<std::string, std::set<int>>;

/// The file's rows, and those of the functions of one factor: text 0 for no operand, 1 for a string, also where the
/// cell holds none.
std::vector<FileCase> all_errors() {
    std::vector<FileCase> rows = read_cases("statements/error_tables.txt");
    std::istringstream words(
        "SIN COS TAN ASN ACS ATN HYPSIN HYPCOS HYPTAN HYPASN HYPACS HYPATN SQR EXP LN LOG INT FRAC "
        "ABS SGN FACT EOX EOY CUR");
    for (std::string word; words >> word;) {
        const std::string error = "ERR2 " + (word == "SQR" ? "SQRT" : word);
        rows.push_back({"", "A=" + word, error + " 0", 0});
        for (const char* operand : {"\"A\"", " A$", "(A$+\"B\")"})
            rows.push_back({"", "A=" + word + operand, error + (word == "CUR" ? " 0" : " 1"), 0});
    }
    return rows;
}

/// A detail without an error tells of a fault that the program has passed over.
std::string outcome_of_run(TestMachine& t) {
    if (failed(t.m))
        return failure_of(t.m);
    EXPECT_EQ(t.m.run.run_state, STATE_ENDED);
    std::string text = "ok " + t.detail_id() + t.detail();
    std::erase(text, '\r');
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

TEST(ErrorTables, AreReported) {
    TestMachine t;
    for (const FileCase& row : all_errors()) {
        t.start("MODE 4:VAC\n" + row.input);
        t.run_through();
        EXPECT_EQ(outcome_of_run(t), row.expected) << "error_tables.txt:" << row.line << ": " << row.input;
    }
}

/// Notes the numbers that stand in a text right behind `mark`.
void note_numbers(std::set<int>& numbers, const std::string& text, const std::string& mark) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
        const std::size_t digit = text.find_first_not_of(' ', at + mark.size());
        if (digit != std::string::npos && is_digit(text[digit]))
            numbers.insert(std::stoi(text.substr(digit)));
    }
}

/// The texts of these sections that the sources name: {"GOTO", 5}, and the headings of the location block.
Numbers named_in_sources(const Numbers& sections) {
    Numbers numbers;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUILLON_SOURCES)) {
        const bool is_code = entry.path().extension() == ".cpp" || entry.path().extension() == ".h";
        const std::string text = is_code ? bytes_of(entry.path().string()) : "";
        note_numbers(numbers["DLG_ERRINFO"], text, "heading(m,");
        for (const auto& [section, texts] : sections)
            note_numbers(numbers[section], text, "\"" + section + "\",");
    }
    std::erase_if(numbers, [](const auto& section) { return section.second.empty(); });
    return numbers;
}

/// What is asked for: what the sources name, what the rows above have provoked, and what settings complain of.
Numbers asked(const Numbers& sections) {
    Numbers numbers = named_in_sources(sections);
    for (const FileCase& row : all_errors()) {
        std::istringstream words(row.expected);
        std::string code;
        std::string section;
        int number = -1;
        words >> code >> section >> number;
        numbers[section].insert(number);
    }
    const LoadedSettings settings =
        parse_settings("[QZS]\nRUNPAGE=99\nTIMER=0\nZOOM=99\nINTEGER=99\nDECIMAL=99\nFIXED=99\nMODE=99\n");
    numbers["INI"].insert(settings.messages.begin(), settings.messages.end());
    return numbers;
}

Numbers numbers_of(const MessageCatalogue& catalogue) {
    Numbers numbers;
    for (const auto& [section, texts] : catalogue.sections)
        for (const auto& [number, text] : texts)
            numbers[section].insert(number);
    return numbers;
}

TEST(Catalogues, HaveWhatIsAskedForAndNothingElse) {
    const auto english = read_catalogue(QUILLON_RESOURCES "/message.en.ini");
    const auto japanese = read_catalogue(QUILLON_RESOURCES "/message.ja.ini");
    ASSERT_TRUE(english && japanese);
    EXPECT_TRUE(is_valid_utf8(bytes_of(QUILLON_RESOURCES "/message.ja.ini"))) << "not every C library has Shift-JIS";
    Numbers texts = numbers_of(*english);
    EXPECT_EQ(texts, numbers_of(*japanese));
    Numbers of_window;
    for (const WindowText& text : WINDOW_TEXTS)
        EXPECT_TRUE(of_window[text.section].insert(text.number).second) << text.built_in << " has another's place";
    for (const auto& [section, numbers] : of_window) {
        EXPECT_EQ(texts[section], numbers) << section;
        texts.erase(section);
    }
    Numbers of_keys;
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer)
        for (int key = 0; key < SOFT_KEY_COUNT; ++key)
            of_keys["SOFT_KEYS"].insert(soft_key_name_number(soft_key(layer, key)));
    of_keys["SOFT_KEYS"].erase(0); // called by their legends
    EXPECT_EQ(texts.extract("SOFT_KEYS").mapped(), of_keys["SOFT_KEYS"]);
    for (const char* section : {"DLG_CONFIG", "DLG_TRACE", "DLG_TRACE2"})
        EXPECT_EQ(texts.erase(section), 1U) << section; // numbered by the windows themselves
    texts["SYSTEM"].erase(9);                           // of the window's timer
    EXPECT_EQ(asked(texts), texts);
    for (const auto& [section, entries] : english->sections) {
        for (const auto& [number, text] : entries) {
            const std::string other = lookup_message(*japanese, section, number);
            const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
            const bool may_be_equal = section == "DLG_CONFIG" || section == "DLG_TRACE";
            EXPECT_TRUE(std::all_of(text.begin(), text.end(), is_ascii)) << section << number;
            EXPECT_TRUE(may_be_equal || !std::all_of(other.begin(), other.end(), is_ascii)) << section << number;
            EXPECT_EQ(other.find("\xEF\xBF\xBD"), std::string::npos) << section << number << ": a broken character";
            EXPECT_LT(std::max(text.size(), other.size()), 259U) << section << number;
        }
    }
}

} // namespace
} // namespace quillon::testing
