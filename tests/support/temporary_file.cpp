// Files for tests.
#include "tests/support/temporary_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace quillon::testing {

TemporaryFile::TemporaryFile(std::string_view bytes) {
    path = (std::filesystem::temp_directory_path() / "quillon-XXXXXX").string();
    const int file = mkstemp(path.data());
    if (file < 0)
        throw std::runtime_error("cannot make a file like " + path);
    const bool written = write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (close(file) != 0 || !written)
        throw std::runtime_error("cannot write " + path);
}

TemporaryFile::~TemporaryFile() { std::remove(path.c_str()); }

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

} // namespace quillon::testing
