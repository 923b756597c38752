// SPDX-License-Identifier: MIT
// The fast paths do not show: random programs, keys and command lines give the same record after every tick on a
// machine that takes none of them.
#include "core/fields.h"
#include "fuzz/random_programs.h"
#include "keys/virtual_keys.h"
#include "shell/commands.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::testing {
namespace {

/// The two machines, which get the same of everything.
struct Pair {
    TestMachine quick;
    TestMachine plain;

    template <typename Action>
    void both(Action action) {
        action(quick);
        action(plain);
    }

    /// Loads a listing on both and starts it.
    void start(const std::string& listing) {
        both([&](TestMachine& machine) {
            EXPECT_TRUE(machine.load(listing)) << listing;
            machine.m.listing->fast.enabled = &machine == &quick;
            machine.m.settings.wait_print_sc = machine.m.settings.wait_print_sc_ini = 1;
            machine.m.random_seed = 1;
            run_host_command(*machine.simulator, COMMAND_RUN);
        });
    }

    /// What differs after a tick.
    std::string tick() {
        both([](TestMachine& machine) { machine.tick(); });
        return record_difference(quick.m, plain.m);
    }
};

/// Starts the program at a line, as RUN with a number does: where it failed before, it would fail again.
void run_from(TestMachine& machine, std::size_t line) {
    run_host_command(*machine.simulator, COMMAND_RUN);
    machine.m.program.cur_line = static_cast<int>(line);
    machine.m.program.stmt_start = machine.m.listing->areas[0].lines[line].tokens;
}

void enter_command_line(TestMachine& machine, const std::string& line) {
    run_host_command(*machine.simulator, COMMAND_LINE);
    machine.tick();
    machine.m.entry.entry_line.text = line;
    machine.m.keys.enter_request = true;
}

/// EXE, a key, the clear key, a command line, a new run: whatever a person may do between two ticks.
void act(Pair& pair, fuzz::RandomProgram& random) {
    const int choice = random.below(40);
    const bool exe = random.below(3) == 0;
    const std::string text = choice == 2 ? random.statements() : random.key();
    pair.both([&](TestMachine& machine) {
        switch (choice) {
        case 0: run_host_command(*machine.simulator, COMMAND_RUN); break;
        case 1: machine.m.keys.held_key = VK_HOME; break;
        case 2: enter_command_line(machine, text); break;
        case 3: machine.m.keys.key_string = text; break;
        default: machine.m.keys.enter_request = exe;
        }
    });
    const bool held = pair.plain.m.run.run_state != STATE_RUN && pair.plain.m.run.run_state != STATE_PRINT_WAIT;
    if (held && random.below(4) == 0) {
        const auto line = static_cast<std::size_t>(random.below(fuzz::RandomProgram::LINES));
        pair.both([line](TestMachine& machine) { run_from(machine, line); });
    }
}

TEST(FastPaths, DoNotShowWhereTheyGiveUp) {
    std::vector<std::string> lines = {
        "A 5",         "A$ \"X\"", "A$=\"X\" 5",           "A=B C",          "A=5 &",     "PRINT GOSUB 20",
        "PRINT A;END", "A=Z(200)", "B=1E99*10:B=B*10:A=B", "B=2E99*9:A=1+B", "A=1/(B-B)", "A=LN(-1)"};
    for (const char* piece : {"IF ", "(", "-", "A(", "SIN ", "IF A("}) {
        std::string nest;
        for (int depth = 1; depth <= 76; ++depth) {
            nest += piece;
            if (depth >= 16)
                lines.push_back(nest + "1");
        }
    }
    Pair pair;
    for (const std::string& line : lines) {
        for (const char* before : {"", "IF IF A=", "A="}) {
            pair.start("[P0]\n1 " + std::string(before) + line + "\n");
            for (int tick = 0; tick < 4; ++tick)
                ASSERT_EQ(pair.tick(), "") << before << line;
        }
    }
}

TEST(FastPaths, DoNotShow) {
    constexpr int PROGRAMS = 150;
    constexpr int TICKS = 250;
    fuzz::RandomProgram random(740);
    Pair pair;
    int translated = 0;
    for (int i = 0; i < PROGRAMS; ++i) {
        const std::string listing = random.listing();
        pair.start(listing);
        for (int tick = 0; tick < TICKS; ++tick) {
            act(pair, random);
            ASSERT_EQ(pair.tick(), "") << "after tick " << tick << " of\n" << listing;
        }
        translated += static_cast<int>(pair.quick.m.listing->fast.expressions.size());
        EXPECT_TRUE(pair.plain.m.listing->fast.expressions.empty());
    }
    EXPECT_GT(translated, 4 * PROGRAMS);
}

} // namespace
} // namespace quillon::testing
