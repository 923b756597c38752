// SPDX-License-Identifier: MIT
// The driving protocol. Files are read and written in a folder of the target's own only, which has a listing `a` and a
// catalogue `b`; an input makes a bounded number of ticks.
#include "fuzz/user.h"

#include "files/host_disk.h"
#include "protocols/drive.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace quillon;

namespace {

void enter_own_folder() {
    static std::string folder = std::filesystem::temp_directory_path() / "quillon-fuzz-XXXXXX";
    fuzz::require(mkdtemp(folder.data()) != nullptr && chdir(folder.c_str()) == 0, "no folder for temporary files");
    std::ofstream("a") << "[P0]\n10 INPUT A$:PRINT A$,1/3\n20 BEEP 1:GOTO 10\n[P9]\n10 GLOAD \"a\":PRINT X\n";
    std::ofstream("b") << "[SYSTEM]\nM_001=no memory\nM_004=\"not known: \"\n[GOTO]\nM_004=where@to?\n";
    std::atexit([] { std::filesystem::remove_all(folder); });
}

/// The command with a path or a count that is harmless.
std::string tamed(std::string_view line, long long& ticks_left) {
    const std::string name(line.substr(0, line.find(' ')));
    const std::string_view argument = line.substr(std::min(name.size() + 1, line.size()));
    if (name == "snapshot" && !argument.empty())
        return "snapshot c";
    if (name == "load" || name == "catalogue")
        return argument == "a" || argument == "b" || argument == "-" || argument.empty() ? std::string(line)
                                                                                         : name + " none";
    long long count = 0;
    const auto [end, error] = std::from_chars(argument.data(), argument.data() + argument.size(), count);
    if ((name != "tick" && name != "wait") || error != std::errc() || count < 0)
        return std::string(line);
    count = std::min(count, ticks_left);
    ticks_left -= count;
    return name + " " + std::to_string(count) + std::string(end, argument.data() + argument.size());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    enter_own_folder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int LINES_MAX = 200;
    long long ticks_left = 600; // each is drawn and looked through: more would leave few runs a second
    std::string_view text = fuzz::as_text(data, size);
    DriveSession session(host_disk());
    for (int line = 0; line < LINES_MAX && !text.empty() && !session.finished; ++line) {
        const auto answer = drive_line(session, tamed(fuzz::take_until(text, '\n'), ticks_left));
        fuzz::require(!answer || (answer->starts_with("{\"ok\":") && answer->find('\n') == std::string::npos),
                      "an answer is not one line of JSON");
    }
    return 0;
}
