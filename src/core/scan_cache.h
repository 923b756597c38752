// The scan cache: what the scanner says of each place in the loaded text where a running program reads a token. Text is
// immutable while a listing is loaded, so each token is scanned once, when the listing is loaded.
//
// It holds nothing but the scanner's own answers: with or without it the machine does the same, only slower without.
// Text elsewhere (command lines, entries) is not in it and is scanned each time.
#pragma once

#include "core/scanner.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillon {

struct ProgramArea;

struct ScanCache {
    bool enabled = true;                 ///< false: nothing is kept from the next load on
    const char* text = nullptr;          ///< the loaded text
    std::size_t text_size = 0;           ///< its bytes and the NUL behind them; 0 when nothing is kept
    std::vector<Token> tokens;           ///< of all lines, in their order
    std::vector<std::uint32_t> token_at; ///< for each byte of the text the token that a scan from there gives, counted
                                         ///< from 1; 0 where nothing is read
};

/// A text of more bytes than this is scanned each time it is read: its tokens would take too much memory.
constexpr std::size_t CACHED_TEXT_MAX = std::size_t{512} << 10;

/// Scans all lines of the areas, which lie in `text`. The text must stay where it is until the cache is dropped.
void fill_scan_cache(ScanCache& cache, std::string_view text, std::span<const ProgramArea> areas);

/// Forgets the text, before it changes.
void drop_scan_cache(ScanCache& cache);

/// A token's index in the cache that it lies in.
inline std::size_t token_index(const ScanCache& cache, const Token& token) {
    return static_cast<std::size_t>(&token - cache.tokens.data());
}

/// The token at or after `position`, as `scan_token` gives it; null where the cache has none.
inline const Token* find_token(const ScanCache& cache, const char* position) {
    // As numbers, for the position may lie in another text: then the difference is too large.
    const auto offset = reinterpret_cast<std::uintptr_t>(position) - reinterpret_cast<std::uintptr_t>(cache.text);
    const std::uint32_t count = offset < cache.text_size ? cache.token_at[offset] : 0;
    return count != 0 ? &cache.tokens[count - 1] : nullptr;
}

} // namespace quillon
