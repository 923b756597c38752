// SPDX-License-Identifier: MIT
// Stands in for the fuzzer where the compiler has none: gives a target the files that are named, and all files of the
// folders that are named. So the seeds and every finding of the past are tests. The number in front is how many damaged
// copies of each file follow it, always the same ones.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argument_count, char*** arguments);

namespace {

namespace fs = std::filesystem;

void give(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// The bytes with some of them changed, taken out or doubled.
std::string damaged(std::string bytes, std::minstd_rand& random) {
    constexpr std::size_t LONGEST_PIECE = 40;
    for (auto changes = 1 + random() % 4; changes > 0 && !bytes.empty(); --changes) {
        const std::size_t at = random() % bytes.size();
        const std::size_t length = 1 + random() % LONGEST_PIECE;
        switch (random() % 4) {
        case 0: bytes.erase(at, length); break;
        case 1: bytes.insert(random() % bytes.size(), bytes.substr(at, length)); break;
        default: bytes[at] = static_cast<char>(random() % 256);
        }
    }
    return bytes;
}

void replay(const fs::path& file, int copies) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "%s cannot be read\n", file.c_str());
        std::exit(1);
    }
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::fprintf(stderr, "%s\n", file.c_str());
    give(bytes);
    std::minstd_rand random;
    for (int copy = 1; copy <= copies; ++copy) {
        const std::string input = damaged(bytes, random);
        std::fprintf(stderr, "%s, damaged copy %d\n", file.c_str(), copy);
        give(input);
    }
}

} // namespace

int main(int argument_count, char** arguments) {
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(&argument_count, &arguments);
    const int copies = argument_count > 1 ? std::atoi(arguments[1]) : 0;
    int files = 0;
    for (int i = 2; i < argument_count; ++i) {
        const fs::path path = arguments[i];
        if (!fs::is_directory(path)) {
            replay(path, copies);
            ++files;
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
            replay(entry.path(), copies);
            ++files;
        }
    }
    return files > 0 ? 0 : 1;
}
