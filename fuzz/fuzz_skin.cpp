// SPDX-License-Identifier: MIT
// Bitmap skins: any bytes are refused, or make a skin that the LCD can be drawn with. Tried as they are and continued
// to the length of a whole skin, so that an input of a few bytes can be one.
#include "fuzz/user.h"

#include "display/skin_file.h"

using namespace quillon;

namespace {

void install(const std::vector<std::uint8_t>& file) {
    IndexedImage image;
    if (read_skin_file(file, image) != SkinFault::NONE)
        return;
    static const auto s = fuzz::make_simulator(); // one is enough: a skin replaces the one before
    fuzz::require(install_skin(s->lcd, image), "an accepted skin cannot be installed");
    fuzz::tick(*s);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t WHOLE_SKIN = BITMAP_FILE_HEADER_SIZE + BITMAP_PIXEL_OFFSET + std::size_t{512} * 480;
    std::vector<std::uint8_t> file(data, data + size);
    install(file);
    file.resize(std::max(size, WHOLE_SKIN));
    install(file);
    return 0;
}
