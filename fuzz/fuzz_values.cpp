// SPDX-License-Identifier: MIT
// The saved values: any bytes give a variable memory that the machine can live with, and that is read back as written.
#include "fuzz/user.h"

#include "shell/saved_values.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto s = std::make_unique<Simulator>();
    read_values_image(s->machine, {data, size});
    fuzz::tick(*s);
    const ValuesImage image = values_image(s->machine);
    fuzz::require(read_values_image(s->machine, image), "values that were written are not understood");
    fuzz::require(values_image(s->machine) == image, "values change when they are kept");
    return 0;
}
