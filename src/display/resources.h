// SPDX-License-Identifier: MIT
// The pictures built into the program, drawn and compressed by tools/draw_resources when it is built.
#pragma once

#include <cstdint>
#include <span>

namespace quillon {

constexpr int ABOUT_IMAGE = 128;         ///< 90 x 42: the pocket computer; index 0 is what lies around it
constexpr int SKIN_IMAGE = 129;          ///< 512 x 480: glyphs, indicators and panel of the LCD
constexpr int SOFT_KEYBOARD_IMAGE = 130; ///< 448 x 240: the keyboard's six layers of 224 x 80

/// The GLZ0 resource of an image, for `decode_image_resource`; empty for an unknown number.
std::span<const std::uint8_t> image_resource(int id);

} // namespace quillon
