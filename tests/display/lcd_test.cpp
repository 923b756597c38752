// SPDX-License-Identifier: MIT
// The LCD's picture: every character dot by dot, offsets, indicators by state and in their order, colours, and that
// nothing is drawn where nothing changed. The places of the sprites are here a second time.
#include "display/lcd.h"

#include "core/charset.h"
#include "core/display_line.h"

#include "display/font.h"
#include "display/sprite_table.h"
#include "shell/skins.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <random>
#include <set>
#include <tuple>

namespace quillon::testing {
namespace {

constexpr Colour LIT = 0x001900, UNLIT = 0x90B068, BACKGROUND = 0xB0C86E, HALF = 0x486434;

/// The rows of a glyph, or of its mirror image; bit 4 is the leftmost dot.
std::array<int, 7> rows_of(int code, bool mirrored = false) {
    std::array<int, 7> rows{};
    for (int row = 0; row < 7; ++row)
        for (int column = 0; column < 5; ++column)
            rows[static_cast<std::size_t>(row)] |=
                glyph_dot(code, mirrored ? 4 - column : column, row) ? 0x10 >> column : 0;
    return rows;
}

struct Lcd : TestMachine {
    Lcd() { load_skin(*simulator, ""); }

    bool render() { return render_lcd(simulator->lcd, m); }
};

Colour pixel(const Canvas& canvas, int x, int y) { return canvas.pixels.at(pixel_index(canvas, x, y)) & 0xFFFFFFU; }

/// In the skin, the gaps between the dots included: how it comes from there on the LCD is tested below.
TEST(LcdCharacters, ShowEveryDotOfTheFont) {
    const Lcd lcd;
    for (int code = 0x20; code < 0xA0; ++code) {
        for (int y = 0; y < 42; ++y) {
            for (int x = 0; x < 32; ++x) {
                const bool in_dot = x >= 1 && x < 26 && x % 5 != 0 && y % 6 != 5;
                const Colour dot = in_dot && glyph_dot(code, x / 5, y / 6) ? LIT : UNLIT;
                const Colour shown = pixel(lcd.simulator->lcd.skin, code % 16 * 32 + x, 432 - 48 * (code / 16 - 2) + y);
                ASSERT_EQ(shown, in_dot ? dot : BACKGROUND) << code << ": " << x << "," << y;
            }
        }
    }
}

/// The glyphs have no second picture; what is known of their shapes tells a wrong dot, and the sum of all the rest.
TEST(Font, HasTheShapesOfItsCharacters) {
    for (const char* pair : {"()", "<>", "[]", "{}", "/\x98", "pq", "\x81\x83", "\x84\x86"})
        EXPECT_EQ(rows_of(as_byte(pair[0]), true), rows_of(as_byte(pair[1]))) << pair;
    for (const char c :
         std::string_view(" !\"#*+-8=AHIMOTUVWXY\\^_ovw|\x85\x88\x89\x8a\x8b\x8c\x90\x91\x92\x93\x94\x96"))
        EXPECT_EQ(rows_of(as_byte(c), true), rows_of(as_byte(c))) << c;
    std::set<std::array<int, 7>> glyphs;
    std::uint64_t sum = 0;
    for (int code = 0x1F; code <= 0xA0; ++code) {
        const std::array<int, 7> rows = rows_of(code);
        EXPECT_TRUE(glyphs.insert(rows).second || code == 0x20 || code == 0x99 || code == 0x9A || code == 0x80 ||
                    code > 0x9F)
            << code << " looks like another one";
        for (const int row : rows)
            sum = (sum ^ static_cast<std::uint64_t>(row)) * 0x100000001B3;
        for (const auto& [column, row] : {std::pair{-1, 0}, {5, 0}, {0, -1}, {0, 7}})
            EXPECT_FALSE(glyph_dot(code, column, row)) << code;
    }
    EXPECT_EQ(sum, 8846186480542038668U) << "a dot has changed: look at the picture before you take the new sum";
}

/// The sprites again: where they lie in a skin of 512 x 480 pixels with y from the top. The first is the panel, 128.
constexpr Rectangle SPRITES[] = {
    {120, 8, 392, 88}, {0, 84, 32, 12},  {32, 84, 32, 12}, {64, 84, 28, 12}, {92, 84, 28, 12},  {0, 52, 36, 28},
    {36, 52, 36, 28},  {72, 68, 20, 12}, {92, 68, 20, 12}, {72, 52, 16, 16}, {88, 52, 16, 16},  {0, 40, 40, 12},
    {40, 40, 40, 12},  {0, 28, 96, 12},  {0, 16, 96, 12},  {0, 4, 96, 12},   {104, 52, 16, 16}, {104, 36, 16, 16},
};

void copy_sprite(Canvas& target, const Canvas& skin, int x, int y, const Rectangle& from) {
    for (int row = 0; row < from.height; ++row)
        for (int column = 0; column < from.width; ++column)
            target.pixels.at(pixel_index(target, x + column, y + row)) =
                skin.pixels.at(pixel_index(skin, from.x + column, from.y + row));
}

/// The first visible column: the line scrolls for a cursor beyond it, one sooner where a cursor is shown behind text.
int expected_offset(const Machine& m) {
    const int width = is_typing(m) ? 11 : 12;
    return m.screen.display_cursor > width && m.screen.display_cursor < 510 ? m.screen.display_cursor - width : 0;
}

/// The whole picture drawn the plain way: the panel, twelve cells, eight indicators one over the other. Their names, as
/// far as they are lit, go to `lit`.
Canvas drawn_plainly(const Canvas& skin, const Machine& m, std::vector<std::string_view>& lit) {
    Canvas canvas = make_canvas(392, 88, 0);
    copy_sprite(canvas, skin, 0, 0, SPRITES[0]);
    for (int cell = 0; cell < 12; ++cell) {
        int code = static_cast<unsigned char>(m.screen.display_line[expected_offset(m) + cell]);
        code = code < 0x20 || code > 0x9F ? 0x94 : code;
        copy_sprite(canvas, skin, 8 + 32 * cell, 40, {code % 16 * 32, 432 - 48 * (code / 16 - 2), 32, 42});
    }
    struct Indicator {
        int x, y, first, state;
        const char* names[3];
    };
    const int run_state = number_of(m.run.run_state);
    const bool stop = run_state == 1 || run_state == 3 || run_state == 8;
    const Indicator indicators[] = {
        {4, 16, 129, m.keys.ctrl_flag, {"", "EXT", ""}},
        {32, 4, 137, m.keys.shift_flag, {"", "S", ""}},
        {32, 20, 144, m.keys.alt_flag, {"", "F", ""}},
        {48, 8, 133, run_state == 5 ? 1 : 0, {"RUN", "WRT", ""}},
        {84, 16, 141, number_of(m.settings.angle_unit), {"DEG", "RAD", "GRA"}},
        {184, 16, 135, m.trace.trace_mode, {"", "TR", ""}},
        {296, 16, 131, m.screen.print_mode, {"", "PRT", ""}},
        {332, 16, 139, stop ? 1 : 0, {"", "STOP", ""}},
    };
    lit.clear();
    for (const auto& [x, y, first, state, names] : indicators) {
        copy_sprite(canvas, skin, x, y, SPRITES[first + state - 128]);
        if (*names[state] != 0)
            lit.emplace_back(names[state]);
    }
    return canvas;
}

/// A skin in which no two places look the same, so that a pixel from a wrong place shows.
IndexedImage speckled_skin() {
    IndexedImage image = make_indexed_image(512, 480, 0);
    std::minstd_rand random(7);
    for (std::uint8_t& pixel : image.pixels)
        pixel = static_cast<std::uint8_t>(random() >> 8);
    for (std::size_t i = 0; i < 256; ++i)
        image.palette[i] = static_cast<Colour>(random() & 0xFFFFFFU);
    return image;
}

/// Whatever changes, in whatever order: each picture is the one that drawing all of it would give.
TEST(LcdPicture, IsTheSamePartByPartAsDrawnWhole) {
    std::minstd_rand random(11);
    const auto below = [&random](int n) { return static_cast<int>(random() / 64 % static_cast<unsigned>(n)); };
    Lcd lcd;
    Machine& m = lcd.m;
    Canvas before = lcd.simulator->lcd.canvas;
    std::vector<std::string_view> lit;
    for (int round = 0; round < 1000; ++round) {
        SCOPED_TRACE(round);
        if (round == 300)
            install_skin(lcd.simulator->lcd, speckled_skin());
        for (bool* flag :
             {&m.keys.ctrl_flag, &m.keys.shift_flag, &m.keys.alt_flag, &m.trace.trace_mode, &m.screen.print_mode})
            *flag = below(4) == 0 ? !*flag : *flag;
        m.settings.angle_unit = below(4) == 0 ? static_cast<AngleUnit>(below(3)) : m.settings.angle_unit;
        m.run.run_state = below(3) == 0 ? static_cast<RunState>(below(10)) : m.run.run_state;
        const int cursors[] = {below(30), below(520), 510 - below(3), 10 + below(4), -below(3), INT_MAX, INT_MIN};
        m.screen.display_cursor = below(3) == 0 ? cursors[below(7)] : m.screen.display_cursor;
        for (int i = 0; i < 3; ++i)
            m.screen.display_line[below(round % 3 == 0 ? 40 : 511)] = static_cast<char>(below(256));
        ASSERT_EQ(first_visible_column(m), expected_offset(m));
        m.screen.display_offset = expected_offset(m);
        const bool drawn = lcd.render();
        const Canvas& canvas = lcd.simulator->lcd.canvas;
        ASSERT_TRUE(canvas.pixels == drawn_plainly(lcd.simulator->lcd.skin, m, lit).pixels);
        ASSERT_EQ(lit_indicators(lcd.simulator->lcd), lit);
        ASSERT_TRUE(drawn || canvas.pixels == before.pixels) << "a change that nobody was told of";
        before = canvas;
    }
}

TEST(LcdPicture, IsDrawnOnlyWhereSomethingChanged) {
    Lcd lcd;
    const std::tuple<const char*, void (*)(Lcd&), bool> rows[] = {
        {"the first time", [](Lcd&) {}, true},
        {"outside of what is visible", [](Lcd& t) { t.m.screen.display_line[12] = 'X'; }, false},
        {"the last column", [](Lcd& t) { t.m.screen.display_line[11] = '\x94'; }, true},
        {"a code that looks the same", [](Lcd& t) { t.m.screen.display_line[11] = '\x01'; }, false},
        {"an indicator", [](Lcd& t) { t.m.keys.shift_flag = true; }, true},
        {"what is not in the picture",
         [](Lcd& t) { t.m.error.error_code = ERROR_SYNTAX, t.m.settings.zoom = t.m.settings.run_page = 3; }, false},
        {"a skin", [](Lcd& t) { install_skin(t.simulator->lcd, speckled_skin()); }, true},
        {"no skin", [](Lcd& t) { install_skin(t.simulator->lcd, make_indexed_image(511, 480, 0)); }, false},
    };
    for (const auto& [what, change, is_drawn] : rows) {
        change(lcd);
        EXPECT_EQ(lcd.render(), is_drawn) << what;
        EXPECT_FALSE(lcd.render()) << what << ", drawn already";
    }
    TestMachine without_skin;
    EXPECT_FALSE(simulator_tick(*without_skin.simulator));
    Lcd blinking; // the selected area, and nothing between
    blinking.m.settings.cursor_interval = 13;
    int drawn = 0;
    for (int i = 0; i < 150; ++i)
        drawn += simulator_tick(*blinking.simulator) ? 1 : 0;
    EXPECT_EQ(drawn, 11) << "once at first, then every 15 ticks";
}

TEST(LcdColours, AreThoseOfTheSettingsWithTheirHalfTone) {
    for (const bool configured : {false, true}) {
        TestMachine t;
        Preferences& preferences = t.simulator->preferences;
        if (configured)
            preferences.pal_on = 0xFF0103, preferences.pal_off = 0x01FF08, preferences.pal_bg = 0x123456;
        load_skin(*t.simulator, "");
        std::set<Colour> colours;
        for (const Rectangle part : {Rectangle{0, 84, 64, 12}, {0, 40, 80, 12}, {32, 336, 32, 42}}) // EXT, STOP, "A"
            for (int y = part.y; y < part.y + part.height; ++y)
                for (int x = part.x; x < part.x + part.width; ++x)
                    colours.insert(pixel(t.simulator->lcd.skin, x, y));
        EXPECT_EQ(colours, (configured ? std::set<Colour>{0xFF0103, 0x01FF08, 0x123456, 0x808005}
                                       : std::set<Colour>{LIT, UNLIT, BACKGROUND, HALF}));
    }
}

} // namespace
} // namespace quillon::testing
