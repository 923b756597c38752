// The vocabulary and the slots of the keyword table.
#include "core/keywords.h"

#include "core/charset.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace quillon::testing {
namespace {

struct Row {
    const char* word;
    int code;
};

// In registration order. The three bytes are PI, EX and EM as characters.
// clang-format off
constexpr Row WORDS[] = {
    {"BREAK", 511},  {"BREAKA", 510}, {"=", 256},      {"-", 10},       {"+", 11},       {"*", 12},
    {"/", 13},       {"&", 15},       {"|", 16},       {"^", 17},       {"~", 18},       {"MOD", 14},
    {"SIN", 257},    {"COS", 258},    {"TAN", 259},    {"ASN", 260},    {"ACS", 261},    {"ATN", 262},
    {"SQR", 263},    {"EXP", 264},    {"LN", 265},     {"LOG", 266},    {"INT", 267},    {"FRAC", 268},
    {"ABS", 269},    {"SGN", 284},    {"CSR", 270},    {"KEY", 271},    {"KEY$", 271},   {"LEN", 272},
    {"MID", 273},    {"MID$", 273},   {"VAL", 274},    {"STR$", 287},   {"PI", 19},      {"EX", 279},
    {"EM", 286},     {"RAN#", 278},   {"RND", 277},    {"DEG", 288},    {"DMS$", 289},   {"HEX$", 290},
    {"HYPSIN", 291}, {"HYPCOS", 292}, {"HYPTAN", 293}, {"HYPASN", 294}, {"HYPACS", 295}, {"HYPATN", 296},
    {"REC", 297},    {"POL", 298},    {"FACT", 299},   {"NPR", 300},    {"NCR", 301},    {"EOX", 302},
    {"EOY", 303},    {"CUR", 304},    {"\x87", 19},    {"\x8D", 279},   {"\x9C", 286},   {"INPUT", 515},
    {"PRINT", 516},  {"GOTO", 517},   {"FOR", 518},    {"TO", 542},     {"STEP", 543},   {"NEXT", 519},
    {"IF", 520},     {"THEN", 521},   {"GOSUB", 522},  {"RETURN", 523}, {"STOP", 524},   {"END", 525},
    {"RUN", 526},    {"LIST", 527},   {"LIST_A", 528}, {"MODE", 529},   {"SET", 530},    {"VAC", 531},
    {"REM", 544},    {"CLEAR", 532},  {"CLEAR_A", 533},                 {"DEFM", 534},   {"SAVE", 535},
    {"SAVE_A", 536}, {"LOAD", 537},   {"LOAD_A", 538}, {"PUT", 539},    {"GET", 540},    {"VER", 541},
    {"VERIFY", 541}, {"BEEP", 545},   {"COMMAND", 546},                 {"BEEPWAIT", 547},
    {"BEEPS", 548},  {"LET", 550},    {"PASS", 549},   {"ON", 551},     {"DATA", 552},   {"READ", 553},
    {"RESTORE", 554},                 {"DIM", 555},    {"READ#", 556},  {"RESTORE#", 557},
    {"WRITE#", 558}, {"GLOAD", 559},
};
// clang-format on

constexpr int SLOT_COUNT = 4500;

/// The slot of a word, by a hash of the test's own; negative for hashes from 2^31 on.
int slot_of(std::string_view word) {
    std::int64_t hash = 0;
    for (const char c : word)
        hash = (hash * 7 % 0x100000000) ^ as_byte(to_lower(c));
    return static_cast<int>((hash >= 0x80000000 ? hash - 0x100000000 : hash) % SLOT_COUNT);
}

std::string lower(std::string word) {
    for (char& c : word)
        c = to_lower(c);
    return word;
}

TEST(Keywords, EveryWordYieldsItsOwnCodeInAnyLetterCase) {
    for (const Row& row : WORDS) {
        std::string mixed = row.word;
        for (std::size_t i = 1; i < mixed.size(); i += 2)
            mixed[i] = to_lower(mixed[i]);
        EXPECT_EQ(lookup_keyword(row.word), row.code) << row.word;
        EXPECT_EQ(lookup_keyword(lower(row.word)), row.code) << row.word;
        EXPECT_EQ(lookup_keyword(mixed), row.code) << row.word;
    }
}

TEST(Keywords, AnyOtherWordYieldsWhatWasRegisteredLastInItsSlot) {
    std::map<int, int> codes;
    std::map<std::string, int> words;
    for (const Row& row : WORDS) {
        codes[slot_of(row.word)] = row.code;
        words[lower(row.word)] = row.code;
    }
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
