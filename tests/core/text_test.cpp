// SPDX-License-Identifier: MIT
// Bounded text: what is longer is cut, and nothing is written beyond.
#include "core/text.h"

#include <gtest/gtest.h>

#include <memory>

namespace quillon::testing {
namespace {

using Text = BoundedText<5>;

struct Edit {
    const char* before;
    void (*edit)(Text&);
    const char* after;
};

// clang-format off
constexpr Edit EDITS[] = {
    {"ABC", [](Text& t) { t.insert(0, 'X'); }, "XABC"},   {"ABC", [](Text& t) { t.insert(3, 'X'); }, "ABCX"},
    {"ABC", [](Text& t) { t.insert(4, 'X'); }, "ABC"},    {"ABCD", [](Text& t) { t.insert(2, 'X'); }, "ABXCD"},
    {"ABC", [](Text& t) { t.erase(0); }, "BC"},           {"ABC", [](Text& t) { t.erase(2); }, "AB"},
    {"ABC", [](Text& t) { t.erase(3); }, "ABC"},          {"", [](Text& t) { t.erase(0); }, ""},
    {"ABC", [](Text& t) { t.set(1, 'X'); }, "AXC"},       {"ABC", [](Text& t) { t.set(3, 'X'); }, "ABC"},
    {"ABC", [](Text& t) { t.shorten(2); }, "AB"},         {"ABC", [](Text& t) { t.shorten(9); }, "ABC"},
    {"ABC", [](Text& t) { t.clear(); }, ""},              {"ABC", [](Text& t) { t.assign(t.view().substr(1)); }, "BC"},
    {"ABC", [](Text& t) { t.append(t.view()); }, "ABCAB"},{"ABC", [](Text& t) { t = *&t; }, "ABC"},
    {"ABCDEFG", [](Text&) {}, "ABCDE"},                   {"", [](Text& t) { t = "ABCDEFG"; }, "ABCDE"},
    {"ABCDE", [](Text& t) { t.push_back('X'); }, "ABCDE"},{"ABCDE", [](Text& t) { t.insert(0, 'X'); }, "ABCDE"},
    {"ABCDE", [](Text& t) { t.append("X"); }, "ABCDE"},   {"AB", [](Text& t) { t.append("CDEFGH"); }, "ABCDE"},
};
// clang-format on

TEST(BoundedText, IsEditedInPlaceAndCut) {
    for (const Edit& row : EDITS) {
        const auto text = std::make_unique<Text>(std::string_view(row.before)); // on the heap: overruns are seen
        row.edit(*text);
        EXPECT_STREQ(text->c_str(), row.after) << row.before;
        EXPECT_EQ(text->size(), std::string_view(row.after).size());
    }
    EXPECT_STREQ(Text().c_str(), "");
    EXPECT_EQ(Text(std::string_view("A\0B", 3)).size(), 3U);
}

} // namespace
} // namespace quillon::testing
