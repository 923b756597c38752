// SPDX-License-Identifier: MIT
// The list of recent listings and its text.
#include "shell/recent_listings.h"

#include <algorithm>

namespace quillon {
namespace {

bool has_a_line(std::string_view path) {
    return !path.empty() && path.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

} // namespace

void add_recent_listing(RecentListings& recent, std::string_view path) {
    if (!has_a_line(path))
        return;
    std::string first(path); // `path` may be a part of the list
    recent.erase(std::remove(recent.begin(), recent.end(), first), recent.end());
    recent.insert(recent.begin(), std::move(first));
    recent.resize(std::min(recent.size(), RECENT_LISTINGS_MAX));
}

RecentListings parse_recent_listings(std::string_view text) {
    RecentListings recent;
    while (!text.empty() && recent.size() < RECENT_LISTINGS_MAX) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view path = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (path.ends_with('\r')) // an editor may have written it so
            path.remove_suffix(1);
        if (has_a_line(path) && std::find(recent.begin(), recent.end(), path) == recent.end())
            recent.emplace_back(path);
    }
    return recent;
}

std::string recent_listings_text(const RecentListings& recent) {
    std::string text;
    for (const std::string& path : recent)
        text += path + '\n';
    return text;
}

} // namespace quillon
