// The vocabulary and the slots of the keyword table.
#include "core/keywords.h"

#include "core/charset.h"
#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace quillon::testing {
namespace {

constexpr int SLOT_COUNT = 4500;

/// The slot of a word, by a hash of the test's own; negative for hashes from 2^31 on.
int slot_of(std::string_view word) {
    std::int64_t hash = 0;
    for (const char c : word)
        hash = (hash * 7 % 0x100000000) ^ as_byte(to_lower(c));
    return static_cast<int>((hash >= 0x80000000 ? hash - 0x100000000 : hash) % SLOT_COUNT);
}

std::string lower(std::string word) {
    std::transform(word.begin(), word.end(), word.begin(), to_lower);
    return word;
}

/// The code of a word in any letter case.
std::string code_of(const std::string& word) {
    std::string mixed = word;
    for (std::size_t i = 1; i < mixed.size(); i += 2)
        mixed[i] = to_lower(mixed[i]);
    const int code = lookup_keyword(word);
    EXPECT_EQ(lookup_keyword(lower(word)), code) << word;
    EXPECT_EQ(lookup_keyword(mixed), code) << word;
    return std::to_string(code);
}

TEST(Keywords, HaveTheirCodesAndAnyOtherWordThatOfTheLastInItsSlot) {
    std::map<int, int> codes;
    std::map<std::string, int> words;
    expect_cases("core/keywords.txt", [&](const FileCase& row) {
        const char* first = row.input.c_str();
        const std::string word = row.input[0] == '\\' ? std::string(1, static_cast<char>(read_char(first))) : row.input;
        codes[slot_of(word)] = words[lower(word)] = std::stoi(row.expected);
        return code_of(word);
    });
    std::map<int, int> strangers; // code -> how many words outside the vocabulary yield it
    int negative = 0;             // slots, which are empty
    for (const std::string prefix : {"", "abcdefgh"}) {
        for (int n = 0; n < 26 * 26 * 26 * 26; ++n) {
            std::string word = prefix;
            for (int rest = n, i = 0; i < 4; ++i, rest /= 26)
                word += static_cast<char>('a' + rest % 26);
            if (words.contains(word))
                continue;
            const int at = slot_of(word);
            const int expected = at < 0 || !codes.contains(at) ? 0 : codes[at];
            ASSERT_EQ(lookup_keyword(word), expected) << word;
            ++strangers[expected];
            negative += at < 0 ? 1 : 0;
        }
    }
    EXPECT_GT(negative, 10000);
    EXPECT_GT(strangers[0], 0);
    EXPECT_GT(strangers[548], 0) << "the slot of SAVE_A and BEEPS";
    EXPECT_GT(strangers[533], 0) << "the slot of CLEAR and CLEAR_A";
    EXPECT_EQ(strangers[536] + strangers[532], 0);
}

} // namespace
} // namespace quillon::testing
