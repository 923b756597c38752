// SPDX-License-Identifier: MIT
// Signatures as people read them.
#include "tooling/signature_text.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillon::testing {
namespace {

TEST(SignatureText, ShowsWordAndArguments) {
    const std::pair<TokenCode, std::string> rows[] = {
        {TOKEN_MID, "MID$(start [, length])"},
        {TOKEN_DEG, "DEG(degrees [, minutes] [, seconds])"},
        {TOKEN_STR, "STR$(x)"},
        {TOKEN_KEY, "KEY$"},
        {TOKEN_RAN, "RAN#"},
        {TOKEN_SQR, "SQR x"},
        {TOKEN_BEEP, "BEEP [tone]"},
        {TOKEN_BEEPS, "BEEPS octave, note, milliseconds"},
    };
    for (const auto& [word, text] : rows) {
        const Signature* signature = find_word_signature(word);
        ASSERT_NE(signature, nullptr) << text;
        EXPECT_EQ(signature_text(*signature), text);
    }
    EXPECT_EQ(find_word_signature(TOKEN_PRINT), nullptr);
}

} // namespace
} // namespace quillon::testing
