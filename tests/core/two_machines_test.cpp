// SPDX-License-Identifier: MIT
// Machines side by side: each does what it does alone, for nothing of a machine lies outside its record.
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon::testing {
namespace {

constexpr const char* PROGRAMS[] = {
    "10 FOR I=1 TO 20:A=A+I/7:A(I+30)=A:GOSUB 100:NEXT I\n20 PRINT \"DONE\";A;\" AND MORE TEXT\"\n30 GOTO 10\n100 PRINT A,-A;:RETURN",
    "10 A$=A$+\"X\":$=A$+$:PRINT $;LEN\n",
    "10 A=A-1:B$=\"ABCDEFGHIJKL\":PRINT B$;A;B$\n20 IF A>-9 THEN 10\n30 PRINT A(222)",
    "10 A=A+1:PRINT ((((A))));:GOTO 10",
};

/// A machine that runs one of the programs, and everything it showed.
struct Recording {
    explicit Recording(const char* program) {
        machine.m.settings.wait_print_sc = 2;
        machine.m.settings.wait_print_sc_ini = 5;
        machine.start(program);
    }

    void tick() {
        const Machine& m = machine.m;
        machine.m.keys.enter_request = shown.size() % 13 == 0;
        machine.tick();
        shown.push_back(machine.display() + " " + std::to_string(number_of(m.run.run_state)) + " " +
                        std::to_string(m.program.cur_line) + " " + std::to_string(m.variables[0].number) + " " +
                        m.error.error_detail.c_str());
    }

    TestMachine machine;
    std::vector<std::string> shown;
};

TEST(TwoMachines, DoWhatEachDoesAlone) {
    for (const char* first : PROGRAMS) {
        Recording alone(first);
        while (alone.shown.size() < 600)
            alone.tick();
        for (const char* second : PROGRAMS) {
            Recording a(first);
            Recording b(second);
            while (a.shown.size() < alone.shown.size()) {
                a.tick();
                b.tick();
            }
            EXPECT_EQ(a.shown, alone.shown) << first << "\nbeside\n" << second;
        }
    }
}

} // namespace
} // namespace quillon::testing
