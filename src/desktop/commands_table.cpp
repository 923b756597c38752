// SPDX-License-Identifier: MIT
// Menus and toolbar as tables.
#include "desktop/commands_table.h"

namespace quillon {
namespace {

constexpr HostCommand PAGES[] = {
    COMMAND_PAGE_0, COMMAND_PAGE_1, COMMAND_PAGE_2, COMMAND_PAGE_3, COMMAND_PAGE_4,
    COMMAND_PAGE_5, COMMAND_PAGE_6, COMMAND_PAGE_7, COMMAND_PAGE_8, COMMAND_PAGE_9,
};
constexpr HostCommand ANGLES[] = {COMMAND_DEG, COMMAND_RAD, COMMAND_GRA};
constexpr HostCommand ZOOMS[] = {COMMAND_ZOOM_1, COMMAND_ZOOM_2, COMMAND_ZOOM_3, COMMAND_ZOOM_4};

constexpr MenuEntry FILE_MENU[] = {
    {COMMAND_OPEN}, {COMMAND_CONFIGURE}, {SEPARATOR}, {COMMAND_EDITOR}, {COMMAND_RELOAD}, {SEPARATOR}, {COMMAND_EXIT},
};

constexpr MenuEntry COMMAND_MENU[] = {
    {COMMAND_LINE},
    {COMMAND_RUN},
    {COMMAND_STOP},
    {COMMAND_TRACE},
    {SEPARATOR, MENU_PAGES, PAGES},
    {SEPARATOR, MENU_ANGLES, ANGLES},
};

constexpr MenuEntry VIEW_MENU[] = {{SEPARATOR, MENU_ZOOMS, ZOOMS}, {COMMAND_SOFT_KEYBOARD}};

constexpr MenuEntry HELP_MENU[] = {{COMMAND_ERROR_DETAIL}, {COMMAND_HELP}, {COMMAND_ABOUT}};

constexpr MenuLayout MENUS[] = {
    {MENU_FILE, FILE_MENU},
    {MENU_COMMAND, COMMAND_MENU},
    {MENU_VIEW, VIEW_MENU},
    {MENU_HELP, HELP_MENU},
};

constexpr ToolbarEntry TOOLBAR[] = {
    {COMMAND_OPEN, true},    {COMMAND_CONFIGURE},    {COMMAND_ASCII_MODE},
    {COMMAND_SOFT_KEYBOARD}, {COMMAND_OVERDRIVE},    {SEPARATOR},
    {COMMAND_EDITOR},        {COMMAND_RELOAD},       {SEPARATOR},
    {COMMAND_RUN, true},     {COMMAND_LINE},         {COMMAND_STOP},
    {COMMAND_TRACE},         {COMMAND_ERROR_DETAIL}, {SEPARATOR},
    {COMMAND_ABOUT},
};

} // namespace

std::span<const MenuLayout> menu_table() { return MENUS; }
std::span<const ToolbarEntry> toolbar_table() { return TOOLBAR; }
std::span<const HostCommand> page_commands() { return PAGES; }

} // namespace quillon
