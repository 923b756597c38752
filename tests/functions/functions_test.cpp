// SPDX-License-Identifier: MIT
// Functions: values in the three angle units, the ends of domains, argument lists, the random generator, strings, KEY$,
// and CSR in PRINT.
#include "functions/number_functions.h"
#include "shell/key_queue.h"
#include "tests/support/cases_file.h"
#include "tests/support/outcomes.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(Functions, GiveTheirValues) {
    TestMachine t;
    expect_cases("functions/functions.txt", [&t](const FileCase& row) {
        const bool coordinates = row.heading == "X;Y are shown behind";
        return coordinates ? printed(t, row.input, "X;Y") : printed(t, row.heading, row.input);
    });
}

TEST(Functions, RandomNumbersComeInTheGeneratorsOrder) {
    std::uint32_t seed = 1;
    for (const int expected : {41, 18467, 6334, 26500, 19169})
        EXPECT_EQ(next_random(seed), expected);
    const std::pair<std::uint32_t, double> drawn_after[] = {{1, 41 / 32767.0}, {20057, 0}, {30091, 1}};
    for (const auto& [before, drawn] : drawn_after) {
        TestMachine t;
        t.start("A=RAN#");
        EXPECT_EQ(t.m.random_seed, 0U) << "a load seeds with the host's milliseconds";
        t.m.random_seed = before;
        t.run_through();
        EXPECT_EQ(cell(t, 'A').number, drawn) << before;
    }
}

TEST(Functions, KeyReadsWhatIsPending) {
    const std::pair<const char*, const char*> rows[] = {
        {"A", "AA<"}, {"IF ", "IF IF <"}, {"\x87", "\\pi\\pi<"}, {" ", "  <"},
        {"", "<"},    {"\x06", "<"},      {"\x1F", "<"},         {"\x0B", "<"},
    };
    TestMachine t;
    for (const auto& [key, shown] : rows) {
        t.start("PRINT KEY$;KEY;\"<\"");
        t.m.keys.key_string = key;
        t.wait();
        EXPECT_EQ(t.display(), shown);
    }
    t.start("B=LEN(KEY$)");
    t.m.keys.key_string = "\x0A";
    t.run_through();
    EXPECT_EQ(cell(t, 'B').number, 1) << "the paste key's code is let through";
}

TEST(Functions, KeyReadsAHeldKeyUntilItIsReleased) {
    TestMachine t;
    t.start("$=$+KEY$\nGOTO 10");
    t.tick(4);
    KeyEvent key;
    key.key = 'X';
    push_key_event(t.simulator->keys, key);
    t.tick(6);
    key.kind = KeyEvent::Kind::UP;
    push_key_event(t.simulator->keys, key);
    t.tick(10);
    EXPECT_EQ(t.m.variables[DOLLAR_CELL].text.view(), "XXXX") << "in three of six ticks, and as it comes up";
}

} // namespace
} // namespace quillon::testing
