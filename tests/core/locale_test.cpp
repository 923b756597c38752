// Numbers under a locale with a decimal comma, as a toolkit may set it: nothing changes. The build makes the locale.
#include "core/number_format.h"
#include "tests/support/evaluation.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string>
#include <vector>

/// The C library keeps the folder of locales for good.
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep"; }

namespace quillon::testing {
namespace {

/// Everything that turns numbers into text or back, once round.
std::vector<std::string> all_conversions() {
    TestMachine machine;
    std::vector<std::string> texts;
    for (const double x : {0.5, -1234.5678, 1.0 / 3, 1e-7, 1.5e10, 12345678901.0, 1e22, 0.0078125}) {
        for (const int digits : {-1, 3, 20}) {
            machine.m.set_e_digits = digits;
            texts.emplace_back(number_text(machine.m, x).view());
            machine.m.set_e_digits = -1;
            machine.m.set_f_digits = digits;
            texts.emplace_back(number_text(machine.m, x).view());
            machine.m.set_f_digits = -1;
        }
        texts.emplace_back(number_text(machine.m, round6_by_digits(x)).view());
    }
    for (const char* text : {"1.5", "-2.25e-3", "123456789.123456789123456789", "1,5", ".5", "1.5e300"}) {
        std::size_t used = 0;
        const double value = parse_decimal(text, used);
        texts.push_back(std::string(format_exponent(value, 16).view()) + " of " + std::to_string(used));
    }
    for (const char* line :
         {"PRINT 1.5,2.25*2;-0.001", "PRINT 1/3==0.333333333,3.7-INT 3.7", "A=1000000.5:PRINT A;", "A=1.5.2"})
        texts.push_back(shown_by(line));
    machine.load("[P0]\n10 DATA 1.5,2,5\n");
    texts.emplace_back(machine.m.data_index[2].text.view());
    return texts;
}

TEST(Locale, WithADecimalCommaChangesNothing) {
    const std::vector<std::string> before = all_conversions();
    setenv("LOCPATH", QUILLON_LOCALE_FOLDER, 1);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "not built: " << QUILLON_LOCALE_FOLDER;
    std::locale::global(std::locale("de_DE.UTF-8"));
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    ASSERT_STREQ(text, "1,5") << "the locale has no decimal comma";
    EXPECT_EQ(all_conversions(), before);
    EXPECT_EQ(before[0], "0.5");
}

} // namespace
} // namespace quillon::testing
