// SPDX-License-Identifier: MIT
// A locale with a decimal comma, as a toolkit may set it, changes no number: the program of this test has the tests of
// functions in it too, and all run under that locale. The build makes it.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>

/// The C library keeps the folder of locales for good.
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep"; }

namespace quillon::testing {
namespace {

const bool IS_SET = [] {
    setenv("LOCPATH", QUILLON_LOCALE_FOLDER, 1);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        return false;
    std::locale::global(std::locale("de_DE.UTF-8"));
    return true;
}();

TEST(Locale, HasADecimalComma) {
    ASSERT_TRUE(IS_SET) << "not built: " << QUILLON_LOCALE_FOLDER;
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    EXPECT_STREQ(text, "1,5");
}

} // namespace
} // namespace quillon::testing
