// SPDX-License-Identifier: MIT
// From palettised pictures to the toolkit's.
#include "desktop/pictures.h"

#include "display/glz.h"
#include "display/resources.h"

namespace quillon {

QImage load_picture(int resource, bool see_through) {
    constexpr QRgb OPAQUE = 0xFF000000;
    const auto image = decode_image_resource(image_resource(resource));
    if (!image)
        return {};
    QImage picture(image->width, image->height, QImage::Format_ARGB32);
    for (int y = 0; y < image->height; ++y) {
        for (int x = 0; x < image->width; ++x) {
            const std::uint8_t index = image->pixels[pixel_index(*image, x, y)];
            picture.setPixel(x, y, see_through && index == 0 ? 0 : OPAQUE | image->palette[index]);
        }
    }
    return picture;
}

} // namespace quillon
