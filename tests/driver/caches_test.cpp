// The caches do not show: random programs, keys and command lines give the same record after every tick on a machine
// that keeps nothing of its listing but the text.
#include "shell/commands.h"
#include "tests/support/random_programs.h"
#include "tests/support/record_difference.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
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
};

/// Starts the program at a line, as RUN with a number does: where it failed before, it would fail again.
void run_from(Pair& pair, int line) {
    pair.both([line](TestMachine& machine) {
        run_host_command(*machine.simulator, COMMAND_RUN);
        machine.m.cur_line = line;
        machine.m.stmt_start = machine.m.areas[0].lines[static_cast<std::size_t>(line)].text;
    });
}

/// EXE, a key, the clear key, a command line, a new run: whatever a person may do between two ticks.
void act(Pair& pair, RandomProgram& random) {
    switch (random.below(40)) {
    case 0: pair.both([](TestMachine& machine) { run_host_command(*machine.simulator, COMMAND_RUN); }); break;
    case 1: pair.both([](TestMachine& machine) { machine.m.held_key = VIRTUAL_KEY_HOME; }); break;
    case 2: {
        const std::string line = random.statements();
        pair.both([&line](TestMachine& machine) {
            run_host_command(*machine.simulator, COMMAND_LINE);
            machine.tick();
            machine.m.entry_line.text = line;
            machine.m.enter_request = 1;
        });
        break;
    }
    case 3: {
        const std::string key = random.key();
        pair.both([&key](TestMachine& machine) { machine.m.key_string = key; });
        break;
    }
    default: {
        const int exe = random.below(3) == 0 ? 1 : 0;
        pair.both([exe](TestMachine& machine) { machine.m.enter_request = exe; });
    }
    }
    const bool held = pair.plain.m.run_state != STATE_RUN && pair.plain.m.run_state != STATE_PRINT_WAIT;
    if (held && random.below(4) == 0)
        run_from(pair, random.below(RandomProgram::LINES));
}

std::string repeated(std::string_view piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

/// Loads a listing on both and starts it.
void start(Pair& pair, const std::string& listing) {
    pair.plain.m.scan_cache.enabled = false;
    pair.both([&listing](TestMachine& machine) {
        machine.load(listing);
        machine.m.wait_print_sc = machine.m.wait_print_sc_ini = 1;
        machine.m.random_seed = 1;
        run_host_command(*machine.simulator, COMMAND_RUN);
    });
}

TEST(Caches, DoNotShowWhereTheyGiveUp) {
    std::vector<std::string> lines = {"A 5",
                                      "A$ \"X\"",
                                      "A$=\"X\" 5",
                                      "A=B C",
                                      "A=5 &",
                                      "PRINT GOSUB 20",
                                      "PRINT A;END",
                                      "B=1E99*10:B=B*10:A=B",
                                      "B=2E99*9:A=1+B",
                                      "A=Z(200)",
                                      "A=1/(B-B)",
                                      "A=LN(-1)"};
    for (const char* piece : {"IF ", "(", "-", "A(", "SIN ", "IF A("}) {
        for (int depth = 16; depth <= 76; ++depth)
            lines.push_back(repeated(piece, depth) + "1");
    }
    Pair pair;
    for (const std::string& line : lines) {
        for (const std::string& listing :
             {"[P0]\n1 " + line + "\n", "[P0]\n1 IF IF A=" + line + "\n", "[P0]\n1 A=" + line + "\n"}) {
            start(pair, listing);
            for (int tick = 0; tick < 4; ++tick) {
                pair.both([](TestMachine& machine) { machine.tick(); });
                ASSERT_EQ(record_difference(pair.quick.m, pair.plain.m), "") << listing;
            }
        }
    }
}

TEST(Caches, DoNotShow) {
    constexpr int PROGRAMS = 150;
    constexpr int TICKS = 250;
    RandomProgram random(740);
    Pair pair;
    int translated = 0;
    for (int i = 0; i < PROGRAMS; ++i) {
        const std::string listing = random.listing();
        start(pair, listing);
        for (int tick = 0; tick < TICKS; ++tick) {
            act(pair, random);
            pair.both([](TestMachine& machine) { machine.tick(); });
            const std::string difference = record_difference(pair.quick.m, pair.plain.m);
            ASSERT_EQ(difference, "") << "after tick " << tick << " of\n" << listing;
        }
        translated += static_cast<int>(pair.quick.m.expression_cache.expressions.size());
        EXPECT_TRUE(pair.plain.m.scan_cache.tokens.empty());
    }
    EXPECT_GT(translated, 4 * PROGRAMS);
}

} // namespace
} // namespace quillon::testing
