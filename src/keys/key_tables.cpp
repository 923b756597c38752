// SPDX-License-Identifier: MIT
// Key tables of machine mode and ASCII mode.
#include "keys/key_tables.h"

#include "core/charset.h"
#include "keys/virtual_keys.h"

namespace quillon {
namespace {

// clang-format off
constexpr KeyRow MACHINE_ROWS[] = {
    // key    Shift      Ctrl  Shift+Ctrl  Alt
    {'Q',  {"!",         "q",  "%",        "Q"}},
    {'W',  {"\"",        "w",  "'",        "W"}},
    {'E',  {"#",         "e",  "@",        "E"}},
    {'R',  {"$",         "r",  "\\",       "R"}},
    {'T',  {"(",         "t",  "[",        "T"}},
    {'Y',  {")",         "y",  "]",        "Y"}},
    {'U',  {"?",         "u",  "&",        "U"}},
    {'I',  {":",         "i",  "\x84",     "I"}},
    {'O',  {";",         "o",  "\x85",     "O"}},
    {'P',  {",",         "p",  "\x86",     "P"}},
    {'A',  {"GOSUB ",    "a",  "\x88",     "SIN "}},
    {'S',  {"FOR ",      "s",  "\x89",     "COS "}},
    {'D',  {"TO ",       "d",  "\x8A",     "TAN "}},
    {'F',  {"STEP ",     "f",  "\x8B",     "ASN "}},
    {'G',  {"NEXT ",     "g",  "\x8C",     "ACS "}},
    {'H',  {"GOTO ",     "h",  "\x90",     "ATN "}},
    {'J',  {"IF ",       "j",  "\x91",     "LOG "}},
    {'K',  {"THEN ",     "k",  "\x92",     "LN "}},
    {'L',  {"PRINT ",    "l",  "\x93",     "EXP "}},
    {'Z',  {"RETURN ",   "z",  "\x94",     "SQR "}},
    {'X',  {"STOP ",     "x",  "\x8E",     "ABS "}},
    {'C',  {"END ",      "c",  "\x8F",     "SGN "}},
    {'V',  {"DEFM ",     "v",  "_",        "INT "}},
    {'B',  {"RUN ",      "b",  "\x95",     "FRAC "}},
    {'N',  {"LIST ",     "n",  "\x96",     "RAN#"}},
    {'M',  {"INPUT ",    "m",  "\x97",     "CSR "}},
    {' ',  {" ",         " ",  " ",        " "}},
    {'=',  {"\x82",      "",   "",         ""}},
    {CHAR_EXPONENT, {"\x87",      "",   "",         ""}},
    {'/',  {"<",         "",   "",         ""}},
    {'*',  {">",         "",   "",         ""}},
    {'-',  {"\x81",      "",   "",         ""}},
    {'+',  {"\x83",      "",   "",         ""}},
    {'.',  {"^",         "",   "",         ""}},
};

constexpr KeyRow ASCII_ROWS[] = {
    // key  Shift        key  Shift        key  Shift        key  Shift        key  Shift        key  Shift
    {'1', {"!"}},        {'2', {"\""}},    {'3', {"#"}},     {'4', {"$"}},     {'5', {"%"}},     {'6', {"&"}},
    {'7', {"'"}},        {'8', {"("}},     {'9', {")"}},     {'0', {""}},      {'-', {"="}},     {'^', {"~"}},
    {VK_YEN, {"|"}},     {'Q', {"q"}},     {'W', {"w"}},     {'E', {"e"}},     {'R', {"r"}},     {'T', {"t"}},
    {'Y', {"y"}},        {'U', {"u"}},     {'I', {"i"}},     {'O', {"o"}},     {'P', {"p"}},     {'@', {"`"}},
    {'[', {"{"}},        {'A', {"a"}},     {'S', {"s"}},     {'D', {"d"}},     {'F', {"f"}},     {'G', {"g"}},
    {'H', {"h"}},        {'J', {"j"}},     {'K', {"k"}},     {'L', {"l"}},     {';', {"+"}},     {':', {"*"}},
    {']', {"}"}},        {'Z', {"z"}},     {'X', {"x"}},     {'C', {"c", "\x0B"}}, {'V', {"v", "\x0A"}},
    {'B', {"b"}},        {'N', {"n"}},     {'M', {"m"}},     {',', {"<"}},     {'.', {">"}},     {'/', {"?"}},
    {VK_BACKSLASH, {"_"}}, {' ', {" "}},     {'*', {">"}},     {'+', {"\x83"}},
};
// clang-format on

} // namespace

std::span<const KeyRow> machine_key_rows() { return MACHINE_ROWS; }

std::span<const KeyRow> ascii_key_rows() { return ASCII_ROWS; }

} // namespace quillon
