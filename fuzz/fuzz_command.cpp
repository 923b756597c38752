// SPDX-License-Identifier: MIT
// Command lines, typed beside a loaded listing. Each line of the input is typed in pieces of up to 15 bytes, control
// bytes being editing keys, and carried out; between lines the machine gets some ticks, with EXE held in the last.
#include "core/controls.h"
#include "fuzz/user.h"

#include "shell/commands.h"

using namespace quillon;

namespace {

constexpr const char* LISTING =
    "[P0]\n10 A=A+1:PRINT A;\"TEN\"\n20 FOR I=1 TO 3:GOSUB 50:NEXT I\n30 INPUT B,C$\n40 STOP\n"
    "45 END\n50 READ D:RETURN\n60 DATA 1,2,3,4\n[P1]\n10 GOTO 10\n";

void type_line(Simulator& s, std::string_view line) {
    constexpr std::size_t PIECE = 15;
    for (; !line.empty(); line.remove_prefix(std::min(PIECE, line.size()))) {
        s.machine.keys.key_string = line.substr(0, PIECE);
        fuzz::tick(s);
        clear_key(s.machine);
        fuzz::tick(s);
    }
    s.machine.keys.enter_request = true;
    fuzz::tick(s);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int LINES_MAX = 24;
    constexpr int TICKS_BETWEEN = 20;
    const auto s = fuzz::make_simulator();
    load_listing_text(s->machine, LISTING);
    run_host_command(*s, COMMAND_LINE);
    s->machine.keys.held_key = 'A'; // any key leads from READY to the line
    fuzz::tick(*s);
    std::string_view text = fuzz::as_text(data, size);
    for (int line = 0; line < LINES_MAX && !text.empty(); ++line) {
        type_line(*s, fuzz::take_until(text, '\n').substr(0, 200));
        for (int i = 0; i < TICKS_BETWEEN; ++i) {
            s->machine.keys.enter_request = i + 2 >= TICKS_BETWEEN ? 1 : 0;
            fuzz::tick(*s);
        }
    }
    return 0;
}
