// SPDX-License-Identifier: MIT
// A person at the machine who does anything at all: keys, words, the mouse, the host's commands. What to do comes from
// an input's bytes or from a seeded generator. The fuzz targets and the soak share this.
#pragma once

#include "session/input.h"
#include "shell/simulator.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace quillon::fuzz {

/// A row of choices: each takes a byte of the input, and when there are no more a generated one.
class Choices {
public:
    explicit Choices(std::uint64_t seed, std::string_view bytes = {}) : state_(seed * 2 + 1), bytes_(bytes) {}

    /// A number from 0 to `count` - 1, at most 256 of them.
    int below(int count);

    /// All bytes of the input have been used.
    [[nodiscard]] bool exhausted() const { return bytes_.empty(); }

private:
    std::uint64_t state_;
    std::string_view bytes_;
};

/// A simulator with the default skin and a clipboard that a person can copy to and paste from.
std::unique_ptr<Simulator> make_simulator();

/// One thing that a person may do, as inputs that come at once.
std::vector<Input> choose_inputs(Choices& choices);

/// Does one thing to the machine; what it leads to comes with the next ticks.
void act(Simulator& s, Choices& choices);

/// One tick, after which the machine must be whole.
void tick(Simulator& s);

/// Ends the program, and so the fuzzer with a finding, when something is not as it must be.
void require(bool holds, const char* what);

/// The input of a fuzz target as text and as bytes.
inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Splits off what stands before the first `mark`; all of it when there is none.
std::string_view take_until(std::string_view& text, char mark);

} // namespace quillon::fuzz
