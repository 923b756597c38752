// SPDX-License-Identifier: MIT
// A folder or a file for one test, gone at the end, and short ways to files.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace quillon::testing {

struct TempFolder {
    TempFolder() : path(::testing::TempDir() + "quillon-XXXXXX") {
        if (::mkdtemp(path.data()) == nullptr)
            ADD_FAILURE() << "no folder for the test: " << path;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    [[nodiscard]] std::string operator/(std::string_view name) const { return path + "/" + std::string(name); }

    /// The names of everything in it.
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path))
            found.insert(entry.path().filename().string());
        return found;
    }

    std::string path;
};

inline void put_file(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The bytes of a file; "" where it cannot be read.
inline std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The same, "(none)" where there is no file.
inline std::string get_file(const std::string& path) { return std::ifstream(path) ? bytes_of(path) : "(none)"; }

/// A file with these bytes, alone in a folder.
struct TemporaryFile {
    explicit TemporaryFile(std::string_view bytes) { put_file(path, bytes); }
    TempFolder folder;
    std::string path = folder / "file";
};

} // namespace quillon::testing
