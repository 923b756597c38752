// SPDX-License-Identifier: MIT
// Byte arrays as C++ source, and bitmap files.
#include "draw_resources/write_files.h"

#include "display/glz.h"
#include "display/little_endian.h"

#include <cstdio>
#include <fstream>
#include <ostream>

namespace quillon {
namespace {

constexpr int bytes_per_line = 20;

void write_array(std::ostream& out, const Resource& resource) {
    out << "constexpr std::uint8_t image_" << resource.id << "[] = {";
    int count = 0;
    for (const std::uint8_t byte : encode_image_resource(resource.image)) {
        char text[8];
        std::snprintf(text, sizeof text, "0x%02X,", byte);
        out << (count++ % bytes_per_line == 0 ? "\n    " : "") << text;
    }
    out << "\n};\n\n";
}

void write_lookup(std::ostream& out, std::span<const Resource> resources) {
    out << "std::span<const std::uint8_t> image_resource(int id) {\n    switch (id) {\n";
    for (const Resource& resource : resources)
        out << "    case " << resource.id << ":\n        return image_" << resource.id << ";\n";
    out << "    default:\n        return {};\n    }\n}\n";
}

bool close_written(std::ofstream& file, const std::string& path) {
    file.close();
    if (!file)
        std::fprintf(stderr, "draw_resources: cannot write %s\n", path.c_str());
    return static_cast<bool>(file);
}

bool write_bitmap_file(const std::string& path, const IndexedImage& image) {
    const std::vector<std::uint8_t> block = write_bitmap(image);
    std::vector<std::uint8_t> bytes{'B', 'M'};
    append_u32(bytes, static_cast<std::uint32_t>(BITMAP_FILE_HEADER_SIZE + block.size()));
    append_u32(bytes, 0); // reserved
    append_u32(bytes, BITMAP_FILE_HEADER_SIZE + BITMAP_PIXEL_OFFSET);
    bytes.insert(bytes.end(), block.begin(), block.end());
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return close_written(file, path);
}

} // namespace

bool write_source(const std::string& path, std::span<const Resource> resources) {
    std::ofstream file(path, std::ios::binary);
    file << "// Made by tools/draw_resources: the built-in pictures, compressed.\n"
            "#include \"display/resources.h\"\n\nnamespace quillon {\nnamespace {\n\n";
    for (const Resource& resource : resources)
        write_array(file, resource);
    file << "} // namespace\n\n";
    write_lookup(file, resources);
    file << "\n} // namespace quillon\n";
    return close_written(file, path);
}

bool write_bitmap_files(const std::string& folder, std::span<const Resource> resources) {
    for (const Resource& resource : resources)
        if (!write_bitmap_file(folder + "/" + resource.name + ".bmp", resource.image))
            return false;
    return true;
}

} // namespace quillon
