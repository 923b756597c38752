// SPDX-License-Identifier: MIT
// The keyword table: from the letters of a word to its token code, by a hash of 4500 slots.
#pragma once

#include "core/token.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace quillon {

/// One word of the vocabulary, in registration order.
struct Keyword {
    std::string_view spelling;
    TokenCode code;
};

/// The whole vocabulary in registration order (core/vocabulary.def).
std::span<const Keyword> vocabulary();

/// The hash of a word: upper-case letters count as lower-case ones, wrap-around at 32 bits.
constexpr std::uint32_t word_hash(std::string_view word) {
    std::uint32_t hash = 0;
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
        hash = (hash * 7) ^ byte;
    }
    return hash;
}

/// The token code of a word, 0 when there is none. A word of the vocabulary yields its own code. Any other word
/// yields what its slot holds, the word registered last in it: the machine compares hashes, not letters, so a few
/// misspelt words act as real ones.
TokenCode lookup_keyword(std::string_view word);

} // namespace quillon
