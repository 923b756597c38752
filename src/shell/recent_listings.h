// SPDX-License-Identifier: MIT
// The listings that were loaded last, for a menu: a list of paths, and the text of the file that keeps it, one path a
// line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

constexpr std::size_t RECENT_LISTINGS_MAX = 10;

/// Paths of listings, any bytes but line breaks and NUL, the latest first, none twice, at most ten.
using RecentListings = std::vector<std::string>;

/// Puts a listing first. A path with a line break, and an empty one, are left out.
void add_recent_listing(RecentListings& recent, std::string_view path);

/// The list in the text of its file, any text.
RecentListings parse_recent_listings(std::string_view text);

/// The text of the list's file.
std::string recent_listings_text(const RecentListings& recent);

} // namespace quillon
