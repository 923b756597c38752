// SPDX-License-Identifier: MIT
// Ticks allocate nothing. This program counts every `new`; it stands alone because it replaces that operator.
#include "tests/support/cases_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

bool counting = false;
int allocations = 0;

} // namespace

// Not inlined: the compiler would take the pair for a mismatched one.
[[gnu::noinline]] void* operator new(std::size_t size) {
    allocations += counting ? 1 : 0;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace quillon::testing {
namespace {

/// Runs a program with EXE and the key "1" in turn, for every wait, entry and command line. How it ends, and how often
/// something was allocated.
std::string end_of(const std::string& program, int digits) {
    TestMachine machine;
    machine.m.settings.set_f_digits = digits;
    machine.start(program);
    machine.m.settings.wait_print_sc = machine.m.settings.wait_print_sc_ini = 1;
    machine.simulator->around.host.is_key_down = [](int) { return true; };
    const char* end = "never";
    allocations = 0;
    counting = true;
    for (int i = 0; i < 300; ++i) {
        machine.m.keys.enter_request = i % 8 == 0;
        const bool down = i % 8 == 4 || i % 8 == 5;
        machine.m.keys.key_string = down ? "1" : "";
        machine.m.keys.held_key = down ? '1' : 0;
        machine.tick();
        if (machine.m.run.run_state == STATE_ENDED)
            end = !failed(machine.m) ? "ends" : "fails";
        else if (machine.m.run.run_state == STATE_COMMAND)
            end = "command mode";
    }
    counting = false;
    return std::string(end) + (allocations > 0 ? ", " + std::to_string(allocations) + " allocations" : "");
}

TEST(Allocation, IsNotSeenDuringTicks) {
    expect_cases("core/allocation.txt", [](const FileCase& row) {
        const std::string end = end_of(row.input, -1);
        EXPECT_EQ(end_of(row.input, 9), end) << "with SET F 9";
        return end;
    });
}

TEST(Allocation, IsCounted) {
    counting = true;
    allocations = 0;
    const std::string text(1000, 'x');
    counting = false;
    EXPECT_EQ(allocations, 1) << text.size();
}

} // namespace
} // namespace quillon::testing
