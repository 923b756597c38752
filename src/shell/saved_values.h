// SPDX-License-Identifier: MIT
// The variable memory as bytes, the form in which it outlives the program in `QZ740.val`: 223 records of 52 bytes and a
// reserve of 104 zero bytes, least significant byte first on every machine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quillon {

struct Machine;

constexpr std::size_t VALUES_IMAGE_SIZE = 11700;

using ValuesImage = std::array<std::uint8_t, VALUES_IMAGE_SIZE>;

/// The variable memory as it is saved and dumped.
ValuesImage values_image(const Machine& m);

/// Fills the variable memory from saved bytes, any bytes. Cells are never assigned whose records are not there, not
/// whole or damaged: named after another cell, of a type that is none, with a text that does not end, or with a number
/// that is not finite.
/// False when something in the bytes was not understood, and would be lost if they were overwritten; a number that is
/// not finite is none of that, nor is it that records are missing at the end.
bool read_values_image(Machine& m, std::span<const std::uint8_t> bytes);

} // namespace quillon
