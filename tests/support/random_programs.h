// Random programs: mostly sound, now and then with a token too many, too few or in the wrong place.
#pragma once

#include <random>
#include <string>

namespace quillon::testing {

/// Texts from a seed: the same on every run.
class RandomProgram {
public:
    static constexpr int LINES = 12; ///< of an area

    explicit RandomProgram(std::uint32_t seed) : engine_(seed) {}

    /// A listing of the areas P0 and P1, lines 10, 20 and so on.
    std::string listing();

    /// The statements of one line.
    std::string statements();

    /// What `key_string` may hold.
    std::string key();

    int below(int n) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(n)); }

private:
    std::mt19937 engine_;

    std::string made_of(const std::string& part, int depth);
};

} // namespace quillon::testing
