// The list of recent listings: its order, its limits and its file.
#include "shell/recent_listings.h"

#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using testing::put_file;
using testing::TempFolder;

TEST(RecentListings, LatestFirstNoneTwiceTenAtMost) {
    RecentListings recent;
    for (char c = 'a'; c <= 'l'; ++c)
        add_recent_listing(recent, std::string(1, c));
    EXPECT_EQ(recent_listings_text(recent), "l\nk\nj\ni\nh\ng\nf\ne\nd\nc\n");
    add_recent_listing(recent, recent[4]);
    add_recent_listing(recent, "h");
    for (const std::string& path : {std::string(), std::string("a\nb"), std::string("a\r"), std::string("a\0b", 3)})
        add_recent_listing(recent, path);
    EXPECT_EQ(recent_listings_text(recent), "h\nl\nk\nj\ni\ng\nf\ne\nd\nc\n");
}

TEST(RecentListings, ReadsAnyText) {
    const RecentListings expected = {" /a b.bas ", "\"q\"", "/\xFF.bas", "d"};
    EXPECT_EQ(parse_recent_listings(" /a b.bas \r\n\n\"q\"\n/\xFF.bas\n\"q\"\nx\ry\nd"), expected);
    EXPECT_EQ(parse_recent_listings(recent_listings_text(expected)), expected);
    std::string long_list;
    for (int i = 0; i < 100; ++i)
        long_list += std::to_string(i) + "\n";
    EXPECT_EQ(parse_recent_listings(long_list).size(), RECENT_LISTINGS_MAX);
}

TEST(RecentListings, LiveInAFile) {
    const TempFolder folder;
    const RecentListings recent = {"/b", "/a"};
    EXPECT_EQ(read_recent_listings(folder / "recent.txt"), RecentListings{});
    EXPECT_TRUE(write_recent_listings(folder / "recent.txt", recent));
    EXPECT_EQ(read_recent_listings(folder / "recent.txt"), recent);
    EXPECT_FALSE(write_recent_listings(folder / "none/recent.txt", recent));
}

} // namespace
} // namespace quillon
