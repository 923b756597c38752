// SPDX-License-Identifier: MIT
// The six LAYERS of the soft keyboard, each drawn as it lies on the keyboard.
#include "keys/soft_keys.h"

#include <cstddef>

namespace quillon {
namespace {

/// A cell of the drawings below: text in quotes types itself; a word (two characters and more) types once.
struct Cell {
    SoftKey key;

    // NOLINTBEGIN(google-explicit-constructor): the drawings are texts
    template <std::size_t Size>
    constexpr Cell(const char (&text)[Size]) {
        static_assert(Size >= 2 && Size <= 8, "a key types one to seven characters");
        for (std::size_t i = 0; i < Size; ++i)
            key.text[i] = text[i];
        key.kind = Size == 2 ? SoftKeyKind::CHARACTER : SoftKeyKind::ONCE;
    }
    constexpr Cell(SoftKeyKind kind, char first = 0) : key{{first}, kind} {}
    // NOLINTEND(google-explicit-constructor)
};

constexpr Cell CLOSE(SoftKeyKind::CLOSE);
constexpr Cell EXT(SoftKeyKind::EXTENSION_LATCH);
constexpr Cell S(SoftKeyKind::SHIFT_LATCH);
constexpr Cell F(SoftKeyKind::FUNCTION_LATCH);
constexpr Cell BRK(SoftKeyKind::BREAK);
constexpr Cell EXE(SoftKeyKind::EXE);
constexpr Cell LEFT(SoftKeyKind::CHARACTER, 1);
constexpr Cell RIGHT(SoftKeyKind::CHARACTER, 2);
constexpr Cell DEL(SoftKeyKind::ONCE, 3);
constexpr Cell INS(SoftKeyKind::ONCE, 5);
constexpr Cell AC(SoftKeyKind::ONCE, 6);
constexpr Cell ANS(SoftKeyKind::ONCE, 7);
constexpr Cell P0(SoftKeyKind::AREA, 0);
constexpr Cell P1(SoftKeyKind::AREA, 1);
constexpr Cell P2(SoftKeyKind::AREA, 2);
constexpr Cell P3(SoftKeyKind::AREA, 3);
constexpr Cell P4(SoftKeyKind::AREA, 4);
constexpr Cell P5(SoftKeyKind::AREA, 5);
constexpr Cell P6(SoftKeyKind::AREA, 6);
constexpr Cell P7(SoftKeyKind::AREA, 7);
constexpr Cell P8(SoftKeyKind::AREA, 8);
constexpr Cell P9(SoftKeyKind::AREA, 9);

// The machine's symbols, by what they look like.
constexpr Cell LE("\x81");
constexpr Cell NE("\x82");
constexpr Cell GE("\x83");
constexpr Cell WEST("\x84");
constexpr Cell SOUTH("\x85");
constexpr Cell EAST("\x86");
constexpr Cell PI("\x87");
constexpr Cell CIRCLE("\x88");
constexpr Cell SQUARE("\x89");
constexpr Cell TRI("\x8A");
constexpr Cell TIMES("\x8B");
constexpr Cell DIVIDE("\x8C");
constexpr Cell EE("\x8D"); // exponent mark
constexpr Cell DOT("\x8E");
constexpr Cell DEGREE("\x8F");
constexpr Cell SPADE("\x90");
constexpr Cell HEART("\x91");
constexpr Cell DIAM("\x92");
constexpr Cell CLUB("\x93");
constexpr Cell BLOCK("\x94");
constexpr Cell SIGMA("\x95");
constexpr Cell OMEGA("\x96");
constexpr Cell MU("\x97");

using Layer = Cell[SOFT_KEY_COUNT];

// clang-format off

constexpr Layer PLAIN_LAYER = {
    CLOSE, EXT,  LEFT, RIGHT, S,    F,    AC,   DEL,  BRK,  "/",  "7",  "8",  "9",  "*",
    "Q",   "W",  "E",  "R",   "T",  "Y",  "U",  "I",  "O",  "P",  "4",  "5",  "6",  "-",
    "A",   "S",  "D",  "F",   "G",  "H",  "J",  "K",  "L",  ANS,  "1",  "2",  "3",  "+",
    "Z",   "X",  "C",  "V",   "B",  "N",  "M",  " ",  "=",  EE,   "0",  ".",  EXE,  EXE,
};

constexpr Layer SHIFT_LAYER = {
    CLOSE,     EXT,     LEFT,   RIGHT,   S,       F,       AC,       INS,     BRK,      "<", P7, P8,  P9,  ">",
    "!",       "\"",    "#",    "$",     "(",     ")",     "?",      ":",     ";",      ",", P4, P5,  P6,  LE,
    "GOSUB ",  "FOR ",  "TO ",  "STEP ", "NEXT ", "GOTO ", "IF ",    "THEN ", "PRINT ", ANS, P1, P2,  P3,  GE,
    "RETURN ", "STOP ", "END ", "DEFM ", "RUN ",  "LIST ", "INPUT ", " ",     NE,       PI,  P0, "^", EXE, EXE,
};

constexpr Layer FUNCTION_LAYER = {
    CLOSE,  EXT,    LEFT,   RIGHT,  S,       F,       AC,     DEL,   BRK,    "/", "7", "8", "9", "*",
    "Q",    "W",    "E",    "R",    "T",     "Y",     "U",    "I",   "O",    "P", "4", "5", "6", "-",
    "SIN ", "COS ", "TAN ", "ASN ", "ACS ",  "ATN ",  "LOG ", "LN ", "EXP ", ANS, "1", "2", "3", "+",
    "SQR ", "ABS ", "SGN ", "INT ", "FRAC ", "RAN# ", "CSR ", " ",   "=",    EE,  "0", ".", EXE, EXE,
};

constexpr Layer EXTENSION_LAYER = {
    CLOSE, EXT,  LEFT, RIGHT, S,    F,    AC,   DEL,  BRK,  "/",  "7",  "8",  "9",  "*",
    "q",   "w",  "e",  "r",   "t",  "y",  "u",  "i",  "o",  "p",  "4",  "5",  "6",  "-",
    "a",   "s",  "d",  "f",   "g",  "h",  "j",  "k",  "l",  ANS,  "1",  "2",  "3",  "+",
    "z",   "x",  "c",  "v",   "b",  "n",  "m",  " ",  "=",  EE,   "0",  ".",  EXE,  EXE,
};

constexpr Layer EXTENSION_SHIFT_LAYER = {
    CLOSE,  EXT,    LEFT,   RIGHT, S,      F,     AC,    INS,  BRK,   "<",  P7, P8,  P9,  ">",
    "%",    "'",    "@",    "\\",  "[",    "]",   "&",   WEST, SOUTH, EAST, P4, P5,  P6,  LE,
    CIRCLE, SQUARE, TRI,    TIMES, DIVIDE, SPADE, HEART, DIAM, CLUB,  ANS,  P1, P2,  P3,  GE,
    BLOCK,  DOT,    DEGREE, "_",   SIGMA,  OMEGA, MU,    " ",  NE,    PI,   P0, ".", EXE, EXE,
};

// clang-format on

/// By layer; EXT and F together show the plain layer.
constexpr const Layer* LAYERS[SOFT_LAYER_COUNT] = {
    &PLAIN_LAYER, &SHIFT_LAYER, &FUNCTION_LAYER, &EXTENSION_LAYER, &EXTENSION_SHIFT_LAYER, &PLAIN_LAYER,
};

} // namespace

const SoftKey& soft_key(int layer, int index) {
    static constexpr SoftKey no_key;
    if (layer < 0 || layer >= SOFT_LAYER_COUNT || index < 0 || index >= SOFT_KEY_COUNT)
        return no_key;
    return (*LAYERS[layer])[index].key;
}

} // namespace quillon
