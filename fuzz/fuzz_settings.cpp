// SPDX-License-Identifier: MIT
// The settings file: any bytes give settings that the machine can live with, and that are read back as written.
#include "fuzz/user.h"

#include "shell/startup.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const LoadedSettings loaded = parse_settings(fuzz::as_text(data, size));
    const std::string written = settings_text(loaded.settings);
    fuzz::require(settings_text(parse_settings(written).settings) == written, "settings change when they are kept");
    const auto s = std::make_unique<Simulator>();
    use_settings(*s, loaded);
    fuzz::tick(*s);
    return 0;
}
