// SPDX-License-Identifier: MIT
// The character FONT as a table: per character its seven rows from the top, two hexadecimal digits each,
// bit 4 of a row being its leftmost dot. So 0E 11 11 1F 11 11 11 is the letter A.
#include "display/font.h"

#include <cstdint>
#include <iterator>

namespace quillon {
namespace {

constexpr std::uint64_t FONT[] = {
    // 0x20-0x2F
    0x00000000000000, // 20 blank
    0x04040404040004, // 21 !
    0x0A0A0A00000000, // 22 "
    0x0A0A1F0A1F0A0A, // 23 #
    0x040F140E051E04, // 24 $
    0x18190204081303, // 25 %
    0x0C12140815120D, // 26 &
    0x0C040800000000, // 27 '
    0x02040808080402, // 28 (
    0x08040202020408, // 29 )
    0x0004150E150400, // 2A *
    0x0004041F040400, // 2B +
    0x000000000C0408, // 2C ,
    0x0000001F000000, // 2D -
    0x00000000000C0C, // 2E .
    0x00010204081000, // 2F /
    // 0x30-0x3F
    0x0E11131519110E, // 30 0
    0x040C040404040E, // 31 1
    0x0E11010204081F, // 32 2
    0x1F02040201110E, // 33 3
    0x02060A121F0202, // 34 4
    0x1F101E0101110E, // 35 5
    0x0608101E11110E, // 36 6
    0x1F010204040404, // 37 7
    0x0E11110E11110E, // 38 8
    0x0E11110F01020C, // 39 9
    0x000C0C000C0C00, // 3A :
    0x000C0C000C0408, // 3B ;
    0x02040810080402, // 3C <
    0x00001F001F0000, // 3D =
    0x08040201020408, // 3E >
    0x0E110102040004, // 3F ?
    // 0x40-0x4F
    0x0E11010D15150E, // 40 @
    0x0E11111F111111, // 41 A
    0x1E11111E11111E, // 42 B
    0x0E11101010110E, // 43 C
    0x1C12111111121C, // 44 D
    0x1F10101E10101F, // 45 E
    0x1F10101E101010, // 46 F
    0x0E11101711110F, // 47 G
    0x1111111F111111, // 48 H
    0x0E04040404040E, // 49 I
    0x0702020202120C, // 4A J
    0x11121418141211, // 4B K
    0x1010101010101F, // 4C L
    0x111B1515111111, // 4D M
    0x11111915131111, // 4E N
    0x0E11111111110E, // 4F O
    // 0x50-0x5F
    0x1E11111E101010, // 50 P
    0x0E11111115120D, // 51 Q
    0x1E11111E141211, // 52 R
    0x0E11100E01110E, // 53 S
    0x1F040404040404, // 54 T
    0x1111111111110E, // 55 U
    0x11111111110A04, // 56 V
    0x11111115151B11, // 57 W
    0x11110A040A1111, // 58 X
    0x11110A04040404, // 59 Y
    0x1F01020408101F, // 5A Z
    0x0E08080808080E, // 5B [
    0x110A1F041F0404, // 5C yen sign
    0x0E02020202020E, // 5D ]
    0x040E1504040404, // 5E up arrow
    0x0000000000001F, // 5F _
    // 0x60-0x6F
    0x04080C00000000, // 60 `
    0x00000E010F110F, // 61 a
    0x1010161911110E, // 62 b
    0x00000E1010110E, // 63 c
    0x01010D1311110F, // 64 d
    0x00000E111F100E, // 65 e
    0x0205040E040404, // 66 f
    0x00000F110F010E, // 67 g
    0x10101619111111, // 68 h
    0x04000C0404040E, // 69 i
    0x0200020202120C, // 6A j
    0x0808090A0C0A09, // 6B k
    0x0C04040404040E, // 6C l
    0x00001A15151515, // 6D m
    0x00001619111111, // 6E n
    0x00000E1111110E, // 6F o
    // 0x70-0x7F
    0x00001E111E1010, // 70 p
    0x00000F110F0101, // 71 q
    0x00000B0C080808, // 72 r
    0x00000F100E011E, // 73 s
    0x00040E04040502, // 74 t
    0x0000111111130D, // 75 u
    0x00001111110A04, // 76 v
    0x0000111115150A, // 77 w
    0x00001906040C13, // 78 x
    0x00001109060418, // 79 y
    0x00001F0204081F, // 7A z
    0x02040408040402, // 7B {
    0x04040400040404, // 7C |
    0x08040402040408, // 7D }
    0x0000000D160000, // 7E ~
    0x02060E1E0E0602, // 7F left triangle
    // 0x80-0x8F
    0x0000000000001F, // 80 underline
    0x000204081F001F, // 81 less or equal
    0x00081F041F0200, // 82 not equal
    0x000804021F001F, // 83 greater or equal
    0x0004081F080400, // 84 left arrow
    0x04040404150E04, // 85 down arrow
    0x0004021F020400, // 86 right arrow
    0x00001F0A0A0A13, // 87 pi
    0x000E1111110E00, // 88 circle
    0x001F1111111F00, // 89 square
    0x0000040A1F0000, // 8A triangle
    0x00110A040A1100, // 8B multiplication sign
    0x0004001F000400, // 8C division sign
    0x00001E101C101E, // 8D exponent mark
    0x0000000C0C0000, // 8E middle dot
    0x0C12120C000000, // 8F degree sign
    // 0x90-0x9F
    0x040E1F1F15040E, // 90 spade
    0x000A1F1F0E0400, // 91 heart
    0x00040E1F0E0400, // 92 diamond
    0x0E041F1F04040E, // 93 club
    0x1F1F1F1F1F1F1F, // 94 block: all dots lit
    0x1F11080408111F, // 95 capital sigma
    0x0E1111110A0A1B, // 96 capital omega
    0x000012121D1010, // 97 mu
    0x00100804020100, // 98 backslash
    0x00000000000000, // 99 (blank)
    0x00000000000000, // 9A (blank)
    0x000A1F1F1F0E04, // 9B heart, second form
    0x07001C101C101C, // 9C exponent mark and minus
    0x000E0E1F1F040E, // 9D club, second form
    0x00040E1F1F040E, // 9E spade, second form
    0x00040E1F1F0E04, // 9F diamond, second form
};

static_assert(std::size(FONT) == LAST_GLYPH_CODE - FIRST_GLYPH_CODE + 1);

} // namespace

bool glyph_dot(int code, int column, int row) {
    if (code < FIRST_GLYPH_CODE || code > LAST_GLYPH_CODE)
        return false;
    if (column < 0 || column >= GLYPH_COLUMNS || row < 0 || row >= GLYPH_ROWS)
        return false;
    const std::uint64_t rows = FONT[code - FIRST_GLYPH_CODE];
    const std::uint64_t dots = rows >> (8 * (GLYPH_ROWS - 1 - row));
    return (dots >> (GLYPH_COLUMNS - 1 - column) & 1) != 0;
}

} // namespace quillon
