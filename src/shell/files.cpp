// Reading whole files.
#include "shell/files.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, CloseFile>;

/// Opening does not wait for the other end of a pipe.
File open_ordinary(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat about {};
    if (descriptor >= 0 && ::fstat(descriptor, &about) == 0 && S_ISREG(about.st_mode))
        return File(::fdopen(descriptor, "rb"));
    if (descriptor >= 0)
        ::close(descriptor);
    return nullptr;
}

std::optional<std::string> read_start(const File& file, std::size_t count) {
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

std::optional<std::string> read_whole(const File& file, std::size_t limit) {
    std::optional<std::string> bytes = read_start(file, limit + 1);
    if (bytes && bytes->size() > limit)
        return std::nullopt;
    return bytes;
}

} // namespace

std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit) {
    return read_whole(open_ordinary(path), limit);
}

std::optional<std::string> read_file_start(const std::string& path, std::size_t count) {
    return read_start(open_ordinary(path), count);
}

std::optional<std::string> read_whole_input(const std::string& path, std::size_t limit) {
    return read_whole(File(std::fopen(path.c_str(), "rb")), limit);
}

} // namespace quillon
