// SPDX-License-Identifier: MIT
// What the palette entries of the default skin mean, and the colours they have until they are configured.
#pragma once

#include "display/image.h"

#include <cstdint>

namespace quillon {

constexpr std::uint8_t SKIN_BACKGROUND = 1;
constexpr std::uint8_t SKIN_UNLIT = 2;
constexpr std::uint8_t SKIN_HALF_TONE = 3; ///< anti-aliased edges of lit lettering
constexpr std::uint8_t SKIN_LIT = 4;

/// The three colours a user can choose for the LCD.
struct LcdColours {
    Colour lit = 0x001900;
    Colour unlit = 0x90B068;
    Colour background = 0xB0C86E;
};

/// The colour halfway between lit and unlit, each channel rounded down.
Colour half_tone(Colour lit, Colour unlit);

/// Puts the colours and their half tone into the entries 1 to 4; the frame's entries from 5 on stay.
void set_lcd_colours(Palette& palette, const LcdColours& colours);

} // namespace quillon
