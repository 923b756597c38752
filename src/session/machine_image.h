// SPDX-License-Identifier: MIT
// A moment as bytes, the same on every machine: least significant byte first, numbers by their bits, texts with their
// lengths. For saved states, and for sessions whose beginning has been forgotten.
#pragma once

#include "session/moment.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Changes whenever the record or its order changes: an image of another version is not read.
constexpr std::uint32_t IMAGE_VERSION = 1;

/// What an image begins with. Version and checksum of what follows come after it, four bytes each.
constexpr std::string_view IMAGE_MAGIC = "QLLNSTAT";

/// The image of a moment: version, checksum, record, keys, name of the skin, listing.
std::string moment_image(const Moment& moment);

/// No image is larger.
constexpr std::size_t IMAGE_SIZE_MAX = std::size_t{2} << 20;

/// Why bytes are not an image of a moment.
enum class ImageFault : std::uint8_t {
    NONE,
    NOT_AN_IMAGE,
    OTHER_VERSION,
    DAMAGED, ///< cut, changed, or of a state that the machine cannot be in
};

/// Reads an image, any bytes. The skin has its name only: its picture is to be found by who puts the moment in place.
std::optional<Moment> read_moment_image(std::string_view bytes, ImageFault& fault);

/// What to say of a fault.
std::string_view fault_text(ImageFault fault);

} // namespace quillon
