// Bounded text: what is longer is cut, and nothing is written beyond.
#include "core/text.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::testing {
namespace {

using Text = BoundedText<5>;

TEST(BoundedText, CutsWhatIsLonger) {
    Text text;
    EXPECT_EQ(text.view(), "");
    EXPECT_STREQ(text.c_str(), "");
    text = "ABCDEFG";
    EXPECT_STREQ(text.c_str(), "ABCDE");
    EXPECT_EQ(text.size(), 5U);
    text.append("X");
    text.push_back('Y');
    text.insert(0, 'Z');
    EXPECT_EQ(text.view(), "ABCDE");
    text = "AB";
    text.append("CDEFGH");
    EXPECT_STREQ(text.c_str(), "ABCDE");
    EXPECT_EQ(Text(std::string_view("A\0B", 3)).size(), 3U);
}

TEST(BoundedText, EditsInPlace) {
    struct Row {
        const char* before;
        void (*edit)(Text&);
        const char* after;
    };
    // clang-format off
    const Row rows[] = {
        {"ABC", [](Text& t) { t.insert(0, 'X'); }, "XABC"},   {"ABC", [](Text& t) { t.insert(3, 'X'); }, "ABCX"},
        {"ABC", [](Text& t) { t.insert(4, 'X'); }, "ABC"},    {"ABCD", [](Text& t) { t.insert(2, 'X'); }, "ABXCD"},
        {"ABC", [](Text& t) { t.erase(0); }, "BC"},           {"ABC", [](Text& t) { t.erase(2); }, "AB"},
        {"ABC", [](Text& t) { t.erase(3); }, "ABC"},          {"", [](Text& t) { t.erase(0); }, ""},
        {"ABC", [](Text& t) { t.set(1, 'X'); }, "AXC"},       {"ABC", [](Text& t) { t.set(3, 'X'); }, "ABC"},
        {"ABC", [](Text& t) { t.shorten(2); }, "AB"},         {"ABC", [](Text& t) { t.shorten(9); }, "ABC"},
        {"ABC", [](Text& t) { t.clear(); }, ""},              {"ABC", [](Text& t) { t.assign(t.view().substr(1)); }, "BC"},
        {"ABC", [](Text& t) { t.append(t.view()); }, "ABCAB"},{"ABC", [](Text& t) { t = *&t; }, "ABC"},
    };
    // clang-format on
    for (const Row& row : rows) {
        const auto text = std::make_unique<Text>(std::string_view(row.before)); // on the heap: overruns are seen
        row.edit(*text);
        EXPECT_STREQ(text->c_str(), row.after) << row.before;
        EXPECT_EQ(text->size(), std::string_view(row.after).size());
    }
}

} // namespace
} // namespace quillon::testing
