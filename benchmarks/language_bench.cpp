// SPDX-License-Identifier: MIT
// How many statements a second programs run: a tick runs one.
#include "core/controls.h"
#include "shell/commands.h"
#include "shell/simulator.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace quillon {
namespace {

/// Runs an endless program; an item is a statement.
void run_program(benchmark::State& state, const char* lines) {
    const auto simulator = std::make_unique<Simulator>();
    Machine& m = simulator->machine;
    load_listing_text(m, std::string("[P0]\n") + lines);
    run_host_command(*simulator, COMMAND_RUN);
    for (auto _ : state) {
        machine_tick(m);
        if (m.run.run_state != STATE_RUN) {
            state.SkipWithError("the program has stopped");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations());
}

#define PROGRAM(name, lines) BENCHMARK_CAPTURE(run_program, name, lines)

PROGRAM(empty_loop, "10 FOR I=1 TO 1000:NEXT I:GOTO 10\n");
PROGRAM(arithmetic, "10 FOR I=1 TO 1000:A=(I*3+B/7)*2-INT(I/3):NEXT I:GOTO 10\n");
PROGRAM(gosub, "10 GOSUB 100:GOTO 10\n100 RETURN\n");
PROGRAM(strings, "10 A$=\"ABC\"+B$:IF A$=\"ABD\" THEN 30\n20 B$=\"D\":$=A$+\"XYZ\":C$=MID(2,3):GOTO 10\n30 GOTO 10\n");
PROGRAM(sine, "10 FOR I=1 TO 1000:A=SIN I:NEXT I:GOTO 10\n");
PROGRAM(square_root, "10 FOR I=1 TO 1000:A=SQR I:NEXT I:GOTO 10\n");
PROGRAM(data, "10 RESTORE\n20 READ A,B$,C:GOTO 10\n30 DATA 1.5,ABC,-7\n");
PROGRAM(power, "10 FOR I=1 TO 1000:A=I^2.5:NEXT I:GOTO 10\n");
PROGRAM(cells, "10 FOR I=1 TO 100:A(30+I)=A(30+I)+I:NEXT I:GOTO 10\n");
PROGRAM(print, "10 PRINT I;\"/\";A;:PRINT CSR 0;:I=I+1:GOTO 10\n");

} // namespace
} // namespace quillon
