// SPDX-License-Identifier: MIT
// Draws the program's pictures. The build runs it for the source file that holds them, compressed;
// `draw_resources --bmp FOLDER` writes them as bitmap files instead, to look at or to start a skin from.
#include "display/resources.h"
#include "draw_resources/drawings.h"
#include "draw_resources/write_files.h"

#include <cstdio>
#include <string_view>

using namespace quillon;

int main(int count, char** arguments) {
    const bool is_bitmap = count == 3 && std::string_view(arguments[1]) == "--bmp";
    if (count != 2 && !is_bitmap) {
        std::fputs("usage: draw_resources OUTPUT.cpp | draw_resources --bmp FOLDER\n", stderr);
        return 2;
    }
    const Resource resources[] = {
        {ABOUT_IMAGE, "computer", draw_pocket_computer()},
        {SKIN_IMAGE, "skin", draw_skin()},
        {SOFT_KEYBOARD_IMAGE, "soft_keyboard", draw_soft_keyboard()},
    };
    const bool written =
        is_bitmap ? write_bitmap_files(arguments[2], resources) : write_source(arguments[1], resources);
    return written ? 0 : 1;
}
