// SPDX-License-Identifier: MIT
// Menus and toolbar as tables.
#include "desktop/commands_table.h"

namespace quillon {
namespace {

using Kind = MenuEntry::Kind;

// clang-format off
constexpr MenuEntry FILE_MENU[] = {
    {Kind::COMMAND,   {COMMAND_OPEN,      "ﾘｽﾄを開く(&O)",   "open"}},
    {Kind::COMMAND,   {COMMAND_CONFIGURE, "設定(&C)",        "configure"}},
    {Kind::SEPARATOR, {}},
    {Kind::COMMAND,   {COMMAND_EDITOR,    "ｴﾃﾞｨﾀｰ起動(&E)",  "editor"}},
    {Kind::COMMAND,   {COMMAND_RELOAD,    "ﾘｽﾄ再読込(&L)",   "reload"}},
    {Kind::SEPARATOR, {}},
    {Kind::COMMAND,   {COMMAND_EXIT,      "終了(&Q)",        nullptr}},
};

constexpr MenuEntry COMMAND_MENU[] = {
    {Kind::COMMAND, {COMMAND_LINE,  "COMMAND(&C)",  "command-line"}},
    {Kind::COMMAND, {COMMAND_RUN,   "RUN(&R)",      "run"}},
    {Kind::COMMAND, {COMMAND_STOP,  "STOP(&S)",     "stop"}},
    {Kind::COMMAND, {COMMAND_TRACE, "TRACE(&T)",    "trace"}},
    {Kind::PAGES,   {0,             "ページ選択",   nullptr}},
    {Kind::ANGLES,  {0,             "角度単位",     nullptr}},
};

constexpr MenuEntry VIEW_MENU[] = {
    {Kind::ZOOMS,   {0,                     "表示倍率",     nullptr}},
    {Kind::COMMAND, {COMMAND_SOFT_KEYBOARD, "SoftKeyboard", "soft-keyboard"}},
};

constexpr MenuEntry HELP_MENU[] = {
    {Kind::COMMAND, {COMMAND_ERROR_DETAIL, "エラー詳細情報(&E)", "error-detail"}},
    {Kind::COMMAND, {COMMAND_HELP,         "HELP(&H)",           nullptr}},
    {Kind::COMMAND, {COMMAND_ABOUT,        "About.(&A)",         "about"}},
};

constexpr MenuText MENUS[] = {
    {"ﾌｧｲﾙ(&F)",  FILE_MENU},
    {"ｺﾏﾝﾄﾞ(&C)", COMMAND_MENU},
    {"表示(&V)",  VIEW_MENU},
    {"ﾍﾙﾌﾟ(&H)",  HELP_MENU},
};

constexpr ToolbarEntry TOOLBAR[] = {
    {{COMMAND_OPEN,          "Open listing",   "open"},                0, true},
    {{COMMAND_CONFIGURE,     "Configuration",  "configure"},           1},
    {{COMMAND_ASCII_MODE,    "ASCII input",    "ascii-mode", true},    2},
    {{COMMAND_SOFT_KEYBOARD, "Soft keyboard",  "soft-keyboard", true}, 3},
    {{COMMAND_OVERDRIVE,     "Overdrive",      "overdrive", true},     4},
    {{0, nullptr, nullptr}},
    {{COMMAND_EDITOR,        "Edit listing",   "editor"},              5},
    {{COMMAND_RELOAD,        "Reload listing", "reload"},              6},
    {{0, nullptr, nullptr}},
    {{COMMAND_RUN,           "Run",            "run"},                 7, true},
    {{COMMAND_LINE,          "Command line",   "command-line"},        8},
    {{COMMAND_STOP,          "Stop",           "stop"},                9},
    {{COMMAND_TRACE,         "Trace",          "trace"},               10},
    {{COMMAND_ERROR_DETAIL,  "Error details",  "error-detail"},        11},
    {{0, nullptr, nullptr}},
    {{COMMAND_ABOUT,         "About",          "about"},               12},
};

constexpr CommandText PAGES[] = {
    {COMMAND_PAGE_0,     "P0", nullptr}, {COMMAND_PAGE_0 + 1, "P1", nullptr}, {COMMAND_PAGE_0 + 2, "P2", nullptr},
    {COMMAND_PAGE_0 + 3, "P3", nullptr}, {COMMAND_PAGE_0 + 4, "P4", nullptr}, {COMMAND_PAGE_0 + 5, "P5", nullptr},
    {COMMAND_PAGE_0 + 6, "P6", nullptr}, {COMMAND_PAGE_0 + 7, "P7", nullptr}, {COMMAND_PAGE_0 + 8, "P8", nullptr},
    {COMMAND_PAGE_9,     "P9", nullptr},
};

constexpr CommandText ANGLES[] = {
    {COMMAND_DEG, "DEG", nullptr}, {COMMAND_RAD, "RAD", nullptr}, {COMMAND_GRA, "GRA", nullptr},
};

constexpr CommandText ZOOMS[] = {
    {COMMAND_ZOOM_1,     "x1", nullptr}, {COMMAND_ZOOM_1 + 1, "x2", nullptr},
    {COMMAND_ZOOM_1 + 2, "x3", nullptr}, {COMMAND_ZOOM_4,     "x4", nullptr},
};
// clang-format on

} // namespace

std::span<const MenuText> menu_table() { return MENUS; }
std::span<const ToolbarEntry> toolbar_table() { return TOOLBAR; }
std::span<const CommandText> page_commands() { return PAGES; }
std::span<const CommandText> angle_commands() { return ANGLES; }
std::span<const CommandText> zoom_commands() { return ZOOMS; }

} // namespace quillon
