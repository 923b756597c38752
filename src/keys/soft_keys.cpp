// SPDX-License-Identifier: MIT
// The six LAYERS of the soft keyboard, each drawn as it lies on the keyboard.
#include "keys/soft_keys.h"

#include "core/charset.h"
#include "core/states.h"

#include <cstddef>

namespace quillon {
namespace {

/// A cell of the drawings below: text in quotes types itself; a word (two characters and more) types once.
struct Cell {
    SoftKey key;

    // NOLINTBEGIN(google-explicit-constructor): the drawings are texts
    template <std::size_t Size>
    constexpr Cell(const char (&text)[Size], const char* legend = "", const char* name = "") {
        static_assert(Size >= 2 && Size <= 8, "a key types one to seven characters");
        for (std::size_t i = 0; i < Size; ++i)
            key.text[i] = text[i];
        key.kind = Size == 2 ? SoftKeyKind::CHARACTER : SoftKeyKind::ONCE;
        key.legend = legend;
        key.name = name;
    }
    // NOLINTEND(google-explicit-constructor)
    constexpr Cell(SoftKeyKind kind, const char* legend, const char* name) : key{{}, kind, legend, name} {}
    constexpr Cell(SoftKeyKind kind, MachineKey code, const char* legend, const char* name)
        : key{{static_cast<char>(code)}, kind, legend, name} {}
    constexpr Cell(SoftKeyKind kind, char area, const char* legend, const char* name)
        : key{{area}, kind, legend, name} {}
};

// What does something other than typing, with legend and name.
constexpr Cell CLOSE(SoftKeyKind::CLOSE, "✕", "Close the soft keyboard");
constexpr Cell EXT(SoftKeyKind::EXTENSION_LATCH, "EXT", "EXT, extension");
constexpr Cell S(SoftKeyKind::SHIFT_LATCH, "S", "S, shift");
constexpr Cell F(SoftKeyKind::FUNCTION_LATCH, "F", "F, functions");
constexpr Cell BRK(SoftKeyKind::BREAK, "BRK", "Break");
constexpr Cell EXE(SoftKeyKind::EXE, "EXE", "Execute");
constexpr Cell P0(SoftKeyKind::AREA, 0, "P0", "Program area 0");
constexpr Cell P1(SoftKeyKind::AREA, 1, "P1", "Program area 1");
constexpr Cell P2(SoftKeyKind::AREA, 2, "P2", "Program area 2");
constexpr Cell P3(SoftKeyKind::AREA, 3, "P3", "Program area 3");
constexpr Cell P4(SoftKeyKind::AREA, 4, "P4", "Program area 4");
constexpr Cell P5(SoftKeyKind::AREA, 5, "P5", "Program area 5");
constexpr Cell P6(SoftKeyKind::AREA, 6, "P6", "Program area 6");
constexpr Cell P7(SoftKeyKind::AREA, 7, "P7", "Program area 7");
constexpr Cell P8(SoftKeyKind::AREA, 8, "P8", "Program area 8");
constexpr Cell P9(SoftKeyKind::AREA, 9, "P9", "Program area 9");

// The keys of the line editor.
constexpr Cell LEFT(SoftKeyKind::CHARACTER, KEY_LEFT, "←", "Cursor left");
constexpr Cell RIGHT(SoftKeyKind::CHARACTER, KEY_RIGHT, "→", "Cursor right");
constexpr Cell DEL(SoftKeyKind::ONCE, KEY_DELETE, "DEL", "Delete");
constexpr Cell INS(SoftKeyKind::ONCE, KEY_INSERT, "INS", "Insert");
constexpr Cell AC(SoftKeyKind::ONCE, KEY_CLEAR, "AC", "Clear");
constexpr Cell ANS(SoftKeyKind::ONCE, KEY_ANSWER, "ANS", "Last answer");
constexpr Cell SPC(" ", "SPC", "Blank");

// The machine's symbols, by what they look like.
constexpr Cell LE("\x81", "", "less or equal");
constexpr Cell NE("\x82", "", "not equal");
constexpr Cell GE("\x83", "", "greater or equal");
constexpr Cell WEST("\x84", "", "left arrow sign");
constexpr Cell SOUTH("\x85", "", "down arrow sign");
constexpr Cell EAST("\x86", "", "right arrow sign");
constexpr Cell PI("\x87", "", "pi");
constexpr Cell CIRCLE("\x88", "", "circle");
constexpr Cell SQUARE("\x89", "", "square");
constexpr Cell TRI("\x8A", "", "triangle");
constexpr Cell TIMES("\x8B", "", "times");
constexpr Cell DIVIDE("\x8C", "", "divided by");
constexpr Cell EE("\x8D", "", "exponent mark");
constexpr Cell DOT("\x8E", "", "dot");
constexpr Cell DEGREE("\x8F", "", "degree");
constexpr Cell SPADE("\x90", "", "spade");
constexpr Cell HEART("\x91", "", "heart");
constexpr Cell DIAM("\x92", "", "diamond");
constexpr Cell CLUB("\x93", "", "club");
constexpr Cell BLOCK("\x94", "", "block");
constexpr Cell SIGMA("\x95", "", "sigma");
constexpr Cell OMEGA("\x96", "", "omega");
constexpr Cell MU("\x97", "", "mu");

using Layer = Cell[SOFT_KEY_COUNT];

// clang-format off

constexpr Layer PLAIN_LAYER = {
    CLOSE, EXT,  LEFT, RIGHT, S,    F,    AC,   DEL,  BRK,  "/",  "7",  "8",  "9",  "*",
    "Q",   "W",  "E",  "R",   "T",  "Y",  "U",  "I",  "O",  "P",  "4",  "5",  "6",  "-",
    "A",   "S",  "D",  "F",   "G",  "H",  "J",  "K",  "L",  ANS,  "1",  "2",  "3",  "+",
    "Z",   "X",  "C",  "V",   "B",  "N",  "M",  SPC,  "=",  EE,   "0",  ".",  EXE,  EXE,
};

constexpr Layer SHIFT_LAYER = {
    CLOSE,     EXT,     LEFT,   RIGHT,   S,       F,       AC,       INS,     BRK,      "<", P7, P8,  P9,  ">",
    "!",       "\"",    "#",    "$",     "(",     ")",     "?",      ":",     ";",      ",", P4, P5,  P6,  LE,
    "GOSUB ",  "FOR ",  "TO ",  "STEP ", "NEXT ", "GOTO ", "IF ",    "THEN ", "PRINT ", ANS, P1, P2,  P3,  GE,
    "RETURN ", "STOP ", "END ", "DEFM ", "RUN ",  "LIST ", "INPUT ", SPC,     NE,       PI,  P0, "^", EXE, EXE,
};

constexpr Layer FUNCTION_LAYER = {
    CLOSE,  EXT,    LEFT,   RIGHT,  S,       F,       AC,     DEL,   BRK,    "/", "7", "8", "9", "*",
    "Q",    "W",    "E",    "R",    "T",     "Y",     "U",    "I",   "O",    "P", "4", "5", "6", "-",
    "SIN ", "COS ", "TAN ", "ASN ", "ACS ",  "ATN ",  "LOG ", "LN ", "EXP ", ANS, "1", "2", "3", "+",
    "SQR ", "ABS ", "SGN ", "INT ", "FRAC ", "RAN# ", "CSR ", SPC,   "=",    EE,  "0", ".", EXE, EXE,
};

constexpr Layer EXTENSION_LAYER = {
    CLOSE, EXT,  LEFT, RIGHT, S,    F,    AC,   DEL,  BRK,  "/",  "7",  "8",  "9",  "*",
    "q",   "w",  "e",  "r",   "t",  "y",  "u",  "i",  "o",  "p",  "4",  "5",  "6",  "-",
    "a",   "s",  "d",  "f",   "g",  "h",  "j",  "k",  "l",  ANS,  "1",  "2",  "3",  "+",
    "z",   "x",  "c",  "v",   "b",  "n",  "m",  SPC,  "=",  EE,   "0",  ".",  EXE,  EXE,
};

constexpr Layer EXTENSION_SHIFT_LAYER = {
    CLOSE,  EXT,    LEFT,   RIGHT, S,      F,     AC,    INS,  BRK,   "<",  P7, P8,  P9,  ">",
    "%",    "'",    "@",    "\\",  "[",    "]",   "&",   WEST, SOUTH, EAST, P4, P5,  P6,  LE,
    CIRCLE, SQUARE, TRI,    TIMES, DIVIDE, SPADE, HEART, DIAM, CLUB,  ANS,  P1, P2,  P3,  GE,
    BLOCK,  DOT,    DEGREE, "_",   SIGMA,  OMEGA, MU,    SPC,  NE,    PI,   P0, ".", EXE, EXE,
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

std::string soft_key_legend(const SoftKey& key) {
    if (*key.legend != '\0')
        return key.legend;
    const std::string typed = to_unicode(key.text.data());
    return typed.substr(0, typed.find_last_not_of(' ') + 1);
}

int soft_key_name_number(const SoftKey& key) {
    constexpr int FIRST_KIND = 200;
    constexpr int FIRST_AREA = 210;
    if (*key.name == '\0')
        return 0;
    if (key.kind == SoftKeyKind::AREA)
        return FIRST_AREA + key.text[0];
    return key.text[0] != 0 ? as_byte(key.text[0]) : FIRST_KIND + static_cast<int>(key.kind);
}

std::string soft_key_name(const SoftKey& key) { return *key.name != '\0' ? key.name : soft_key_legend(key); }

} // namespace quillon
