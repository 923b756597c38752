// SPDX-License-Identifier: MIT
// Finding, checking and installing skins.
#include "shell/skins.h"

#include "core/charset.h"
#include "core/errors.h"
#include "display/glz.h"
#include "display/resources.h"
#include "display/skin_file.h"
#include "display/skin_palette.h"
#include "display/sprite_table.h"
#include "shell/paths.h"
#include "shell/simulator.h"

#include <cstdio>

namespace quillon {
namespace {

constexpr std::size_t SKIN_FILE_MAX = std::size_t{1} << 20;
constexpr MessageId MESSAGE_BAD_BITMAP{"SYSTEM", 8};

/// Tells of a skin that cannot be used: catalogue text, remark, and the name in quotes.
void refuse_skin(Machine& m, MessageId message, const char* remark, std::string_view name) {
    char shown[400];
    char text[1024];
    std::snprintf(text, sizeof text, "%s %s\"%s\"",
                  lookup_message(m.around->catalogue, message.section, message.number), remark,
                  escape_text(name, shown, sizeof shown));
    m.error.error_detail.assign(text);
    m.around->host.show_message(text, MessageIcon::STOP);
}

bool leaves_folder(std::string_view name) {
    return name.find_first_of("/\\:") != std::string_view::npos || name == "." || name == "..";
}

void refuse_fault(Machine& m, SkinFault fault, std::string_view name) {
    char size[40];
    std::snprintf(size, sizeof size, "(not not %dx%d) ", SKIN_WIDTH, SKIN_HEIGHT);
    switch (fault) {
    case SkinFault::NOT_BITMAP: return refuse_skin(m, MESSAGE_BAD_BITMAP, "(not BMP) ", name);
    case SkinFault::NOT_256: return refuse_skin(m, MESSAGE_BAD_BITMAP, "(not 256color) ", name);
    case SkinFault::WRONG_SIZE: return refuse_skin(m, MESSAGE_BAD_BITMAP, size, name);
    default: return refuse_skin(m, MESSAGE_BAD_BITMAP, "", name);
    }
}

/// Reads and installs a skin file; false, after a message, when that cannot be.
bool install_skin_file(Simulator& s, std::string_view name) {
    Machine& m = s.machine;
    const std::string path = folder_of(s.preferences.last_file) + std::string(name);
    const FileContents file =
        leaves_folder(name) ? FileContents{} : s.disk.read_file(path, SKIN_FILE_MAX, FileKind::ORDINARY);
    if (file.status != ReadStatus::READ) {
        refuse_skin(m, MESSAGE_CANNOT_OPEN, "", name);
        return false;
    }
    IndexedImage image;
    const auto* data = reinterpret_cast<const std::uint8_t*>(file.bytes.data());
    const SkinFault fault = read_skin_file(std::span(data, file.bytes.size()), image);
    if (fault != SkinFault::NONE) {
        refuse_fault(m, fault, name);
        return false;
    }
    install_skin(s.lcd, image);
    s.skin_name = name;
    return true;
}

bool install_default_skin(Simulator& s) {
    auto image = decode_image_resource(image_resource(SKIN_IMAGE));
    if (image)
        set_lcd_colours(image->palette, {s.preferences.pal_on, s.preferences.pal_off, s.preferences.pal_bg});
    s.skin_name.clear();
    if (image && install_skin(s.lcd, *image))
        return true;
    s.machine.around->host.show_message("??|!!!??|!!!", MessageIcon::STOP);
    return false;
}

} // namespace

bool load_skin(Simulator& s, std::string_view name) {
    const bool in_place = !s.lcd.skin.pixels.empty() && s.skin_name == name;
    if (in_place)
        return true;
    if (!name.empty() && install_skin_file(s, name))
        return true;
    return install_default_skin(s);
}

} // namespace quillon
