// SPDX-License-Identifier: MIT
// Random programs: mostly sound, now and then with a token too many, too few or in the wrong place.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quillon::fuzz {

/// Texts composed by a row of choices: the same choices, the same texts.
class RandomProgram {
public:
    static constexpr int LINES = 12; ///< of an area

    /// Chooses by a generator with this seed.
    explicit RandomProgram(std::uint32_t seed);

    /// Chooses by `below`, which takes a count up to 256 and gives a number from 0 to one less.
    explicit RandomProgram(std::function<int(int)> below) : below_(std::move(below)) {}

    /// A listing of the areas P0 and P1, lines 10, 20 and so on.
    std::string listing();

    /// A listing that may have a fault in its headers, its line numbers or its DATA.
    std::string faulty_listing();

    /// The statements of one line.
    std::string statements();

    /// What `key_string` may hold.
    std::string key();

    int below(int n) { return below_(n); }

private:
    std::function<int(int)> below_;

    std::string made_of(const std::string& part, int depth);
};

} // namespace quillon::fuzz
