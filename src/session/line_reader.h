// SPDX-License-Identifier: MIT
// The arguments of a protocol line, one after the other.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Reads arguments that are separated by one blank each. What is not there reads as empty.
class LineReader {
public:
    /// `rest` is what follows the command's name, the blank before its argument included.
    explicit LineReader(std::string_view rest) : rest_(rest) {}

    [[nodiscard]] bool at_end() const { return rest_.empty() || rest_ == " "; }

    /// The next word, and everything that is left.
    std::string_view word();
    std::string_view rest();

    /// The next word as a whole number of a range.
    std::optional<long long> number(long long lowest, long long highest);

private:
    std::string_view rest_;
};

/// A whole number that fills the whole text and lies in a range; nothing otherwise.
std::optional<long long> parse_number(std::string_view text, long long lowest, long long highest);

/// The sentence about a number that is not in its range.
std::string number_refusal(std::string_view what, long long lowest, long long highest);

/// Bytes as two hexadecimal digits each, and back: nothing when these are not at least `fewest` and at most `most`.
std::string hexadecimal(std::string_view bytes);
std::optional<std::string> parse_hexadecimal(std::string_view digits, std::size_t fewest, std::size_t most);

} // namespace quillon
