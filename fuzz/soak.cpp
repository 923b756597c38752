// SPDX-License-Identifier: MIT
// The soak: the machine runs for a very long time over all examples, while a seeded generator types, clicks, gives
// commands and loads. After every tick the machine must be whole, and the memory in use must not grow. At the end a
// digest of all that was seen on the way is printed: two runs with the same seed give the same.
//
//   quillon-soak [TICKS [SEED]]
#include "core/controls.h"
#include "fuzz/user.h"

#include "protocols/drive_state.h"
#include "shell/commands.h"
#include "shell/saved_values.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace quillon::fuzz {
namespace {

constexpr long long TICKS_PER_LISTING = 10'000;
constexpr long long TICKS_PER_RUN = 200; ///< then the program is started anew, or it would mostly stand stopped
constexpr long GROWTH_MAX_KIB = 512;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool MEMORY_IS_MEASURED = false; // the sanitizer keeps freed memory back
#else
constexpr bool MEMORY_IS_MEASURED = true;
#endif

/// FNV-1a, over everything that is worth comparing.
struct Digest {
    std::uint64_t value = 0xCBF29CE484222325;

    void add(std::string_view bytes) {
        for (const char c : bytes)
            value = (value ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
};

template <typename Elements>
std::string_view bytes_of(const Elements& elements) {
    return {reinterpret_cast<const char*>(elements.data()), elements.size() * sizeof elements[0]};
}

void add_state(Digest& digest, const Simulator& s) {
    nlohmann::ordered_json state;
    answer_state(s, state);
    answer_variables(s.machine, state);
    digest.add(state.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
    digest.add(bytes_of(values_image(s.machine)));
    digest.add(bytes_of(s.lcd.canvas.pixels));
    digest.add(bytes_of(s.machine.sound.tone.image));
    for (int i = 0; i < s.machine.program.for_depth; ++i)
        digest.add(std::to_string(s.machine.program.for_frames[i].line));
    for (int i = 0; i < s.machine.program.gosub_depth; ++i)
        digest.add(std::to_string(s.machine.program.gosub_frames[i].line));
}

/// Memory of this process that is in real pages.
long resident_kib() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

std::vector<std::string> example_listings() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_EXAMPLES)) {
        if (entry.path().extension() == ".bas")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Loads the listing; now and then one with a piece cut out.
void load(Simulator& s, const std::string& path, Choices& choices) {
    require(open_listing(s, path), "an example cannot be loaded");
    if (choices.below(4) == 0) {
        std::string text = s.machine.listing->text;
        std::replace(text.begin(), text.end(), '\0', '\n');
        text.erase(text.size() * static_cast<std::size_t>(choices.below(256)) / 256,
                   static_cast<std::size_t>(choices.below(40)));
        load_listing_text(s.machine, std::move(text));
    }
}

void play(Simulator& s, long long ticks, Choices& choices) {
    int pause = 0;
    for (long long i = 0; i < ticks; ++i) {
        if (i % TICKS_PER_RUN == 0) {
            if (choices.below(4) != 0)
                run_host_command(s, COMMAND_PAGE_0); // where the examples have their programs
            run_host_command(s, COMMAND_RUN);
        }
        if (pause-- == 0) {
            act(s, choices);
            pause = choices.below(24);
        }
        tick(s);
    }
}

int soak(long long ticks, std::uint64_t seed) {
    const std::vector<std::string> listings = example_listings();
    require(!listings.empty(), "there are no examples");
    const auto s = make_simulator();
    Choices choices(seed);
    Digest digest;
    long warm_kib = 0;
    const long long loads = std::max(ticks / TICKS_PER_LISTING, 1LL);
    for (long long n = 0; n < loads; ++n) {
        load(*s, listings[static_cast<std::size_t>(n) % listings.size()], choices);
        play(*s, std::min(ticks, TICKS_PER_LISTING), choices);
        add_state(digest, *s);
        if (n == loads / 10) // everything has been loaded and typed by then
            warm_kib = resident_kib();
    }
    const long end_kib = resident_kib();
    std::printf("ticks %lld, loads %lld, seed %llu, digest %016llx\n", loads * std::min(ticks, TICKS_PER_LISTING),
                loads, static_cast<unsigned long long>(seed), static_cast<unsigned long long>(digest.value));
    if (MEMORY_IS_MEASURED) {
        std::fprintf(stderr, "memory: %ld KiB after a tenth, %ld KiB at the end\n", warm_kib, end_kib);
        require(end_kib <= warm_kib + GROWTH_MAX_KIB, "memory grows");
    }
    return 0;
}

} // namespace
} // namespace quillon::fuzz

int main(int argument_count, char** arguments) {
    const long long ticks = argument_count > 1 ? std::atoll(arguments[1]) : 10'000'000;
    const long long seed = argument_count > 2 ? std::atoll(arguments[2]) : 1;
    if (ticks < 1) {
        std::fprintf(stderr, "usage: quillon-soak [TICKS [SEED]]\n");
        return 2;
    }
    return quillon::fuzz::soak(ticks, static_cast<std::uint64_t>(seed));
}
