// SPDX-License-Identifier: MIT
// The LCD's colours in the palette of the default skin.
#include "display/skin_palette.h"

namespace quillon {

Colour half_tone(Colour lit, Colour unlit) {
    Colour mean = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const Colour sum = (lit >> shift & 0xFF) + (unlit >> shift & 0xFF);
        mean |= sum / 2 << shift;
    }
    return mean;
}

void set_lcd_colours(Palette& palette, const LcdColours& colours) {
    palette[SKIN_BACKGROUND] = colours.background;
    palette[SKIN_UNLIT] = colours.unlit;
    palette[SKIN_HALF_TONE] = half_tone(colours.lit, colours.unlit);
    palette[SKIN_LIT] = colours.lit;
}

} // namespace quillon
