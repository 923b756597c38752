// Reading whole files.
#include "shell/files.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace quillon {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit) {
    std::optional<std::string> bytes = read_file_start(path, limit + 1);
    if (bytes && bytes->size() > limit)
        return std::nullopt;
    return bytes;
}

std::optional<std::string> read_file_start(const std::string& path, std::size_t count) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        return std::nullopt;
    std::string bytes;
    char chunk[65536];
    while (bytes.size() < count) {
        const std::size_t got = std::fread(chunk, 1, std::min(sizeof chunk, count - bytes.size()), file.get());
        if (got == 0)
            break;
        bytes.append(chunk, got);
    }
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return bytes;
}

} // namespace quillon
