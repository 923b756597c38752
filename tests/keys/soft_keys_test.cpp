// The soft keyboard's table: kinds by position, texts with their traps, and the two layers that are one.
#include "keys/soft_keys.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace quillon {
namespace {

constexpr int key_at(int row, int column) { return row * SOFT_KEY_COLUMNS + column; }

TEST(SoftKeys, EveryKeyIsSomething) {
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer) {
        for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
            const SoftKey& key = soft_key(layer, index);
            const bool types = key.kind == SoftKeyKind::CHARACTER || key.kind == SoftKeyKind::ONCE;
            EXPECT_NE(key.kind, SoftKeyKind::NONE) << layer << ' ' << index;
            EXPECT_EQ(key.text[7], 0) << layer << ' ' << index;
            EXPECT_TRUE(types == (key.text[0] != 0) || key.kind == SoftKeyKind::AREA) << layer << ' ' << index;
        }
    }
    for (const auto& [layer, index] : {std::pair{-1, 0}, {6, 0}, {0, -1}, {0, 56}})
        EXPECT_EQ(soft_key(layer, index).kind, SoftKeyKind::NONE) << layer << ' ' << index;
}

TEST(SoftKeys, TheCommandKeysStayOnEveryLayer) {
    struct Row {
        int index;
        SoftKeyKind kind;
    };
    const Row rows[] = {
        {0, SoftKeyKind::CLOSE},          {1, SoftKeyKind::EXTENSION_LATCH}, {4, SoftKeyKind::SHIFT_LATCH},
        {5, SoftKeyKind::FUNCTION_LATCH}, {8, SoftKeyKind::BREAK},           {54, SoftKeyKind::EXE},
        {55, SoftKeyKind::EXE},
    };
    for (int layer = 0; layer < SOFT_LAYER_COUNT; ++layer)
        for (const Row& row : rows)
            EXPECT_EQ(soft_key(layer, row.index).kind, row.kind) << layer << ' ' << row.index;
}

TEST(SoftKeys, TypeWhatStandsOnThem) {
    struct Row {
        int layer, row, column;
        const char* text;
        SoftKeyKind kind;
    };
    constexpr SoftKeyKind character = SoftKeyKind::CHARACTER, once = SoftKeyKind::ONCE;
    const Row rows[] = {
        {0, 0, 2, "\x01", character},  {0, 0, 3, "\x02", character},  {0, 0, 6, "\x06", once},
        {0, 0, 7, "\x03", once},       {1, 0, 7, "\x05", once},       {4, 0, 7, "\x05", once},
        {3, 2, 9, "\x07", once},       {0, 2, 0, "A", character},     {1, 2, 0, "GOSUB ", once},
        {2, 2, 0, "SIN ", once},       {3, 2, 0, "a", character},     {4, 2, 0, "\x88", character},
        {1, 1, 1, "\"", character},    {4, 1, 3, "\\", character},    {1, 3, 0, "RETURN ", once},
        {2, 3, 5, "RAN# ", once},      {1, 2, 6, "IF ", once},        {1, 3, 11, "^", character},
        {4, 3, 11, ".", character},    {0, 3, 7, " ", character},     {0, 3, 9, "\x8D", character},
        {4, 3, 9, "\x87", character},  {1, 1, 13, "\x81", character}, {4, 3, 8, "\x82", character},
        {1, 2, 13, "\x83", character}, {4, 3, 6, "\x97", character},  {2, 0, 13, "*", character},
    };
    for (const Row& row : rows) {
        const SoftKey& key = soft_key(row.layer, key_at(row.row, row.column));
        EXPECT_STREQ(key.text.data(), row.text) << "layer " << row.layer;
        EXPECT_EQ(key.kind, row.kind) << "layer " << row.layer << ' ' << row.text;
    }
}

TEST(SoftKeys, DigitsSelectAreasUnderShift) {
    for (const int layer : {1, 4}) {
        for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
            const char digit = soft_key(0, index).text[0];
            const SoftKey& key = soft_key(layer, index);
            const bool is_digit = digit >= '0' && digit <= '9';
            EXPECT_EQ(key.kind == SoftKeyKind::AREA, is_digit) << layer << ' ' << index;
            if (is_digit) {
                EXPECT_EQ(key.text[0], digit - '0');
            }
        }
    }
}

TEST(SoftKeys, ExtensionWithFunctionIsThePlainKeyboard) {
    EXPECT_EQ(soft_layer(0, 1, 1), 5);
    for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
        EXPECT_EQ(soft_key(5, index).kind, soft_key(0, index).kind) << index;
        EXPECT_EQ(soft_key(5, index).text, soft_key(0, index).text) << index;
    }
}

TEST(SoftKeys, ExtensionTurnsLettersSmall) {
    for (int index = 0; index < SOFT_KEY_COUNT; ++index) {
        const char plain = soft_key(0, index).text[0];
        if (plain < 'A' || plain > 'Z')
            continue;
        EXPECT_EQ(soft_key(3, index).text[0], plain - 'A' + 'a');
    }
}

} // namespace
} // namespace quillon
