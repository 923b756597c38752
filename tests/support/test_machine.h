// SPDX-License-Identifier: MIT
// A machine for tests: loads program text, ticks, and tells what it shows, with special characters as their escapes.
// Its catalogue answers every lookup with "SECTION number", so that a test sees which text was asked for.
#pragma once

#include "shell/simulator.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::testing {

/// A catalogue whose texts are their own section and number, each with a byte 1 behind it.
MessageCatalogue naming_catalogue();

/// "[P0]" and these lines, each with a number in steps of ten where it has none.
std::string numbered_listing(std::string_view lines);

/// A simulator on the heap with the host's disk and the naming catalogue.
struct TestMachine {
    TestMachine();

    std::unique_ptr<Simulator> simulator;
    std::vector<std::string> messages; ///< message boxes so far
    Machine& m;

    /// Loads a listing; true when it was accepted.
    bool load(std::string_view listing);

    /// Loads `numbered_listing` and starts P0.
    void start(std::string_view lines);

    void tick(int count = 1);

    /// EXE, and the tick that sees it.
    void exe();

    /// Ticks until the machine waits for a person, has ended or holds an error; at most `most` times. Returns how
    /// often.
    int wait(int most = 100000);

    /// Ticks with EXE held down until the program ends or fails, and returns each line that stood in an EXE wait, and
    /// at last the error text if there is one.
    std::vector<std::string> run_through(int most = 100000);

    /// The display line up to its last character, escapes for special characters.
    [[nodiscard]] std::string display() const;

    /// The twelve visible columns.
    [[nodiscard]] std::string visible() const;

    /// "SECTION number" of the error detail; empty when there is none.
    [[nodiscard]] std::string detail_id() const;

    /// The detail's own part: what follows the catalogue text, up to the location block.
    [[nodiscard]] std::string detail() const;
};

/// Cell A to Z of a machine.
const Variable& cell(const TestMachine& t, char letter);

/// Text with its special characters as escapes.
std::string escaped(std::string_view text);

} // namespace quillon::testing
