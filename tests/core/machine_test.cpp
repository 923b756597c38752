// SPDX-License-Identifier: MIT
// The record as a value: what a reset clears and what it keeps, that a copy goes on as its original does, and that each
// kind of damage is named.
#include "core/machine.h"

#include "core/controls.h"
#include "core/fields.h"
#include "core/invariants.h"
#include "core/run_control.h"
#include "core/variables.h"
#include "tests/support/outcomes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quillon::testing {
namespace {

static_assert(sizeof(Machine) <= std::size_t{40} << 10);

TEST(Machine, AResetLeavesNothingOfARun) {
    TestMachine machine;
    Machine& m = machine.m;
    ASSERT_TRUE(machine.load("[P3]\n10 A\n"));
    const auto fresh = std::make_unique<Machine>(m);
    for (const Field& field : fields())
        field.set(m, field.highest);
    store_number(m.variables[4], 5);
    m.screen.display_line.fill('x');
    const auto before = std::make_unique<Machine>(m);
    reset_machine(m);
    for (const Field& field : fields()) {
        const bool is_reset = (field.uses & FIELD_RESET) != 0;
        if (field.name != "run_state") {
            EXPECT_EQ(field.get(m), field.get(is_reset ? *fresh : *before)) << field.name;
        }
    }
    EXPECT_EQ(m.run.run_state, STATE_SELECT);
    EXPECT_EQ(std::string(m.screen.display_line.data(), DISPLAY_LINE_SIZE), std::string(DISPLAY_LINE_SIZE, ' '));
    EXPECT_EQ(m.variables[4].number, 5);
    EXPECT_EQ(m.listing->areas[3].lines.size(), 1U);
}

/// Programs in the middle of every kind of wait, and of none.
constexpr const char* PROGRAMS[] = {
    "A=A+1:FOR I=1 TO 3:GOSUB 100:NEXT I:GOTO 10\n100 B=B+RAN#:RETURN",
    "PRINT \"WAITS\":A=A+1:GOTO 10",
    "PRINT \"THIS TEXT SCROLLS BY\";A:A=A+1:GOTO 10",
    "INPUT \"NAME\",A$,\"AGE\",B:PRINT A$;B:GOTO 10",
    "A$=KEY$:IF A$=\"\" THEN 10\nB=B+1:PRINT A$;:GOTO 10",
    "BEEPS 40,9,3:A=A+1:GOTO 10",
    "A=1:STOP:A=A+1:PRINT A:GOTO 10",
    "A=1/0",
    "END",
};

/// One tick with the keys that a person holds in it.
void tick_with_keys(Machine& m, int n) {
    m.keys.enter_request = n % 5 == 0;
    m.keys.key_string = n % 7 == 3 ? "4" : "";
    m.keys.held_key = n % 7 == 3 ? '4' : (n % 97 == 96 ? 36 : 0);
    machine_tick(m);
}

TEST(Machine, ACopyGoesOnAsTheOriginal) {
    for (const char* program : PROGRAMS) {
        TestMachine t;
        t.start(program);
        for (const int moment : {0, 1, 2, 3, 5, 8, 40, 75, 130}) {
            for (int n = 0; n < moment; ++n)
                tick_with_keys(t.m, n);
            const auto copy = std::make_unique<Machine>(t.m);
            ASSERT_TRUE(*copy == t.m);
            const auto original = std::make_unique<Machine>(t.m);
            for (int n = 0; n < 10'000; ++n)
                tick_with_keys(*original, n);
            for (int n = 0; n < 10'000; ++n)
                tick_with_keys(*copy, n);
            EXPECT_EQ(record_difference(*original, *copy), "") << program << " after " << moment;
            EXPECT_TRUE(*original == *copy);
        }
    }
}

TEST(Machine, DiffersInAnyField) {
    const auto a = std::make_unique<Machine>(), b = std::make_unique<Machine>();
    for (const Field& field : fields()) {
        const long long number = field.get(*b);
        field.set(*b, number == field.highest ? field.lowest : field.highest);
        if (field.lowest != field.highest) {
            EXPECT_FALSE(*a == *b) << field.name;
            EXPECT_TRUE(record_difference(*a, *b).starts_with(field.name)) << record_difference(*a, *b);
        }
        field.set(*b, number);
        EXPECT_TRUE(*a == *b) << field.name;
    }
    b->variables[7].number = -0.0;
    EXPECT_EQ(record_difference(*a, *b), "cell H") << "zeros of different signs differ";
}

struct Damage {
    const char* named;
    void (*damage)(Machine& m);
};

// clang-format off
constexpr Damage DAMAGES[] = {
    {"base_state",     [](Machine& m) { m.run.base_state = STATE_INPUT; }},
    {"stmt_kind",      [](Machine& m) { m.eval.stmt_kind = static_cast<StmtKind>(5); }},
    {"error_code",     [](Machine& m) { m.error.error_code = static_cast<ErrorCode>(-8); }},
    {"cur_line",       [](Machine& m) { m.program.cur_line = 1; }},
    {"stmt_start",     [](Machine& m) { m.program.stmt_start = 1; }},
    {"next",           [](Machine& m) { m.eval.next = 1; }},
    {"next",           [](Machine& m) { m.entry.saved_next = TYPED - 1; }},
    {"token_start",    [](Machine& m) { m.eval.token_start = 1; }},
    {"for_frames, gosub_frames", [](Machine& m) { m.program.gosub_depth = 1; }},
    {"for_frames, gosub_frames", [](Machine& m) { m.program.for_depth = 1; m.program.for_frames[0].next = 0; }},
    {"value",          [](Machine& m) { m.eval.value.kind = VALUE_NUMVAR; }},
    {"entry_line",     [](Machine& m) { m.run.run_state = STATE_INPUT; }},
    {"tone",           [](Machine& m) { m.sound.tone.samples = TONE_SAMPLES_MAX + 1; }},
};
// clang-format on

TEST(Invariants, NameWhatIsBroken) {
    const auto whole = std::make_unique<Machine>();
    ASSERT_EQ(check_invariants(*whole), nullptr);
    for (const Damage& row : DAMAGES) {
        const auto m = std::make_unique<Machine>();
        row.damage(*m);
        EXPECT_STREQ(check_invariants(*m), row.named);
        EXPECT_DEATH(require_invariants(*m), row.named);
    }
    for (const Field& field : fields()) {
        for (const long long number : {field.lowest - 1, field.highest + 1}) {
            const auto m = std::make_unique<Machine>();
            field.set(*m, number);
            if (field.get(*m) == number) { // else the field's type has no room for it
                EXPECT_EQ(check_invariants(*m), field.name) << number;
            }
        }
    }
}

} // namespace
} // namespace quillon::testing
