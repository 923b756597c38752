// Reading whole files.
#include "shell/files.h"

#include <cstdio>
#include <memory>

namespace quillon {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        return std::nullopt;
    std::string bytes;
    char chunk[65536];
    while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, file.get())) {
        if (bytes.size() + count > limit)
            return std::nullopt;
        bytes.append(chunk, count);
    }
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return bytes;
}

bool write_whole_file(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
    if (file == nullptr)
        return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

} // namespace quillon
