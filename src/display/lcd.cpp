// SPDX-License-Identifier: MIT
// Drawing the LCD.
#include "display/lcd.h"

#include "core/charset.h"
#include "core/machine.h"
#include "display/font.h"
#include "display/sprite_table.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr Colour OPAQUE = 0xFF000000;
constexpr int CELLS_X = 8;
constexpr int CELLS_Y = 40;
constexpr int CELL_PITCH = 32;

/// Where an indicator stands on the canvas.
struct Place {
    int x;
    int y;
};

constexpr Place INDICATOR_PLACES[LCD_INDICATORS] = {
    {4, 16},   // EXT
    {32, 4},   // S
    {32, 20},  // F
    {48, 8},   // RUN, WRT
    {84, 16},  // DEG, RAD, GRA
    {184, 16}, // TR
    {296, 16}, // PRT
    {332, 16}, // STOP
};

/// Copies a sprite of the skin to a place of the canvas, cut at the canvas's edges.
void blit_sprite(LcdPicture& picture, Place place, int sprite) {
    const Rectangle from = sprite_rectangle(sprite);
    const int width = std::min(from.width, picture.canvas.width - place.x);
    const int height = std::min(from.height, picture.canvas.height - place.y);
    for (int row = 0; row < height; ++row) {
        const auto source =
            picture.skin.pixels.begin() + static_cast<std::ptrdiff_t>(pixel_index(picture.skin, from.x, from.y + row));
        const auto target = picture.canvas.pixels.begin() +
                            static_cast<std::ptrdiff_t>(pixel_index(picture.canvas, place.x, place.y + row));
        std::copy_n(source, width, target);
    }
}

/// The sprites that the machine's state lights, in the order of the places.
std::array<int, LCD_INDICATORS> indicator_sprites(const Machine& m) {
    const bool stopped =
        m.run.run_state == STATE_PRINT_WAIT || m.run.run_state == STATE_STOPPED || m.run.run_state == STATE_LINE_SHOWN;
    return {SPRITE_EXT_UNLIT + (m.keys.ctrl_flag ? 1 : 0),    SPRITE_S_UNLIT + (m.keys.shift_flag ? 1 : 0),
            SPRITE_F_UNLIT + (m.keys.alt_flag ? 1 : 0),       m.run.run_state == STATE_SELECT ? SPRITE_WRT : SPRITE_RUN,
            SPRITE_DEG + number_of(m.settings.angle_unit),    m.trace.trace_mode ? SPRITE_TR_LIT : SPRITE_TR_UNLIT,
            SPRITE_PRT_UNLIT + (m.screen.print_mode ? 1 : 0), stopped ? SPRITE_STOP_LIT : SPRITE_STOP_UNLIT};
}

std::uint8_t drawn_code(char c) {
    const unsigned char code = as_byte(c);
    return code < FIRST_GLYPH_CODE || code > LAST_GLYPH_CODE ? CHAR_BLOCK : code;
}

bool draw_cells(LcdPicture& picture, const Machine& m) {
    bool drawn = false;
    const char* visible = m.screen.display_line.data() + m.screen.display_offset;
    for (int i = 0; i < LCD_CELLS; ++i) {
        const std::uint8_t code = drawn_code(visible[i]);
        std::uint8_t& shown = picture.codes[static_cast<std::size_t>(i)];
        if (code == shown)
            continue;
        blit_sprite(picture, {CELLS_X + CELL_PITCH * i, CELLS_Y}, code - FIRST_GLYPH_CODE);
        shown = code;
        drawn = true;
    }
    return drawn;
}

/// Indicators overlap (S and F lie on EXT's right end), so when one changes all are drawn, in their order.
bool draw_indicators(LcdPicture& picture, const Machine& m) {
    const auto sprites = indicator_sprites(m);
    if (sprites == picture.sprites)
        return false;
    for (std::size_t i = 0; i < sprites.size(); ++i)
        blit_sprite(picture, INDICATOR_PLACES[i], sprites[i]);
    picture.sprites = sprites;
    return true;
}

/// The name of an indicator sprite that is lit; the group sprites name the one of them that is.
std::string_view lit_name(int sprite) {
    switch (sprite) {
    case SPRITE_EXT_LIT: return "EXT";
    case SPRITE_S_LIT: return "S";
    case SPRITE_F_LIT: return "F";
    case SPRITE_RUN: return "RUN";
    case SPRITE_WRT: return "WRT";
    case SPRITE_DEG: return "DEG";
    case SPRITE_RAD: return "RAD";
    case SPRITE_GRA: return "GRA";
    case SPRITE_TR_LIT: return "TR";
    case SPRITE_PRT_LIT: return "PRT";
    case SPRITE_STOP_LIT: return "STOP";
    default: return {};
    }
}

} // namespace

LcdPicture::LcdPicture() : canvas(make_canvas(LCD_WIDTH, LCD_HEIGHT, 0)) {}

bool install_skin(LcdPicture& picture, const IndexedImage& image) {
    if (image.width != SKIN_WIDTH || image.height != SKIN_HEIGHT)
        return false;
    Canvas skin = make_canvas(image.width, image.height, 0);
    std::transform(image.pixels.begin(), image.pixels.end(), skin.pixels.begin(),
                   [&image](std::uint8_t index) { return OPAQUE | image.palette[index]; });
    show_skin(picture, skin);
    return true;
}

void show_skin(LcdPicture& picture, const Canvas& skin) {
    picture.skin = skin;
    picture.codes.fill(0);
    picture.sprites.fill(0);
    blit_sprite(picture, {0, 0}, SPRITE_PANEL);
}

bool render_lcd(LcdPicture& picture, const Machine& m) {
    if (picture.skin.pixels.empty())
        return false;
    const bool cells = draw_cells(picture, m);
    const bool indicators = draw_indicators(picture, m);
    return cells || indicators;
}

std::vector<std::string_view> lit_indicators(const LcdPicture& picture) {
    std::vector<std::string_view> names;
    for (const int sprite : picture.sprites) {
        if (const std::string_view name = lit_name(sprite); !name.empty())
            names.push_back(name);
    }
    return names;
}

} // namespace quillon
