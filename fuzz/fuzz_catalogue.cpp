// SPDX-License-Identifier: MIT
// The message catalogue: any bytes give texts with which the machine can tell of its errors.
#include "core/controls.h"
#include "fuzz/user.h"

#include "files/catalogue_file.h"
#include "shell/commands.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto s = std::make_unique<Simulator>();
    s->around.catalogue = decode_catalogue(fuzz::as_text(data, size));
    for (const char* listing :
         {"", "[P0]\n10 GOTO 5\n", "[P0]\n10 A=1/0\n", "[P0]\n10 PRINT @,\"\\pi\"\n", "[P0]\n10 \"A\"=FORX\n"}) {
        load_listing_text(s->machine, listing);
        run_host_command(*s, COMMAND_RUN);
        fuzz::tick(*s);
        fuzz::tick(*s);
    }
    return 0;
}
