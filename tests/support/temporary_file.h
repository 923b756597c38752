// A file that lives as long as the test that made it.
#pragma once

#include <string>
#include <string_view>

namespace quillon::testing {

/// A file with these bytes in the system's folder for temporary files.
struct TemporaryFile {
    explicit TemporaryFile(std::string_view bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path;
};

/// The bytes of a file; "" where it cannot be read.
std::string bytes_of(const std::string& path);

} // namespace quillon::testing
