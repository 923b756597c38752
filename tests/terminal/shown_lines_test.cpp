// Following the display line. What programs print is in run_test.cpp; here is what a whole run cannot show.
#include "terminal/shown_lines.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(ShownLines, OfAProgramThatJoinsWithoutEndStaySmall) {
    TestMachine t;
    t.start("FOR I=1 TO 3000:PRINT I;:NEXT I");
    std::string expected;
    for (int i = 1; i <= 3000; ++i)
        expected += " " + std::to_string(i);
    std::string written;
    ShownLines shown;
    shown.write = [&written](std::string_view text) { written += text; };
    std::size_t longest = 0;
    while (t.m.run_state != STATE_ENDED) {
        t.exe();
        follow_display(shown, t.m);
        longest = std::max(longest, shown.line.size());
    }
    EXPECT_EQ(written, expected) << "all of it before the end";
    finish_shown_lines(shown);
    EXPECT_EQ(written, expected + "\n");
    EXPECT_LT(longest, 2000U);
}

TEST(ShownLines, AreHandedOnAnewWhenTheirColumnIsMovedBack) {
    TestMachine t;
    t.start("PRINT \"ABCDEF\";\nPRINT \"XY\";\nPRINT \"Z\"");
    std::string written;
    ShownLines shown;
    shown.write = [&written](std::string_view text) { written += text; };
    const auto tick = [&] {
        t.tick();
        follow_display(shown, t.m);
    };
    tick();
    tick();
    EXPECT_EQ(written, "ABCDEF");
    t.m.display_cursor = 2;
    for (const char* text : {"ABCDEF", "ABCDEF", "ABCDEF", "ABCDEF", "ABCDEF\nABXYZF\n"}) {
        tick();
        EXPECT_EQ(written, text);
    }
}

} // namespace
} // namespace quillon::testing
