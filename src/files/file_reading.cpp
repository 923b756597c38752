// SPDX-License-Identifier: MIT
// Reading whole files.
#include "files/file_reading.h"

#include "files/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

FileContents unreadable(int error) { return {ReadStatus::UNREADABLE, {}, error}; }

FileContents missing_or_unreadable(int error) {
    const bool is_missing = error == ENOENT || error == ENOTDIR;
    return is_missing ? FileContents{} : unreadable(error);
}

/// Reads on to the end, or to one byte beyond the limit.
FileContents read_descriptor(int descriptor, std::size_t limit, FileKind kind) {
    FileContents contents{ReadStatus::READ};
    while (contents.bytes.size() <= limit) {
        char chunk[4096];
        const std::size_t most = std::min(sizeof chunk, limit + 1 - contents.bytes.size());
        const auto read_chunk = [&] { return ::read(descriptor, chunk, most); };
        const ssize_t count = kind == FileKind::ANY ? read_chunk() : until_uninterrupted(read_chunk);
        if (count < 0)
            return unreadable(errno);
        if (count == 0)
            return contents;
        contents.bytes.append(chunk, static_cast<std::size_t>(count));
    }
    contents.status = ReadStatus::TOO_LARGE;
    contents.bytes.resize(limit);
    return contents;
}

} // namespace

FileContents read_file(const std::string& path, std::size_t limit, FileKind kind) {
    if (path.find('\0') != std::string::npos)
        return unreadable(EINVAL);
    // Opening a pipe would wait for its other end.
    const int flags = O_RDONLY | O_CLOEXEC | (kind == FileKind::ORDINARY ? O_NONBLOCK : 0);
    const auto open_file = [&] { return ::open(path.c_str(), flags); };
    const Descriptor file{kind == FileKind::ANY ? open_file() : until_uninterrupted(open_file)};
    if (file.number < 0)
        return missing_or_unreadable(errno);
    struct stat about {};
    if (until_uninterrupted([&] { return ::fstat(file.number, &about); }) != 0)
        return unreadable(errno);
    if (kind == FileKind::ORDINARY && !S_ISREG(about.st_mode))
        return unreadable(0);
    return read_descriptor(file.number, limit, kind);
}

std::string read_fault_text(const FileContents& file) {
    switch (file.status) {
    case ReadStatus::MISSING: return std::generic_category().message(ENOENT);
    case ReadStatus::TOO_LARGE: return std::generic_category().message(EFBIG);
    default: return file.error == 0 ? "Not an ordinary file" : std::generic_category().message(file.error);
    }
}

std::optional<std::string> read_whole_file(const std::string& path, std::size_t limit) {
    FileContents contents = read_file(path, limit);
    return contents.status == ReadStatus::READ ? std::optional(std::move(contents.bytes)) : std::nullopt;
}

} // namespace quillon
