// Filling the scan cache.
#include "core/scan_cache.h"

#include "core/machine.h"

namespace quillon {
namespace {

/// Scans a line to its end, each token from where the one before it ended, as a running program does.
void scan_line(ScanCache& cache, const char* line) {
    Token token;
    token.end = line;
    do {
        const char* position = token.end;
        token = scan_token(position);
        cache.tokens.push_back(token);
        const auto count = static_cast<std::uint32_t>(cache.tokens.size());
        cache.token_at[static_cast<std::size_t>(position - cache.text)] = count;
        cache.token_at[static_cast<std::size_t>(token.begin - cache.text)] = count; // behind blanks
    } while (token.code != TOKEN_END);
}

} // namespace

void fill_scan_cache(ScanCache& cache, std::string_view text, std::span<const ProgramArea> areas) {
    drop_scan_cache(cache);
    if (!cache.enabled || text.size() > CACHED_TEXT_MAX)
        return;
    cache.text = text.data();
    cache.text_size = text.size() + 1;
    cache.token_at.assign(cache.text_size, 0);
    for (const ProgramArea& area : areas) {
        for (int i = 0; i < area.line_count; ++i)
            scan_line(cache, area.lines[static_cast<std::size_t>(i)].text);
    }
    cache.tokens.shrink_to_fit();
}

void drop_scan_cache(ScanCache& cache) {
    cache.text = nullptr;
    cache.text_size = 0;
    cache.tokens = {};
    cache.token_at = {};
}

} // namespace quillon
