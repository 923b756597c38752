// Stands in for the fuzzer where the compiler has none: gives a target the files that are named, and all files of the
// folders that are named. So the seeds and every finding of the past are tests.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argument_count, char*** arguments);

namespace {

namespace fs = std::filesystem;

void replay(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "%s cannot be read\n", file.c_str());
        std::exit(1);
    }
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::fprintf(stderr, "%s\n", file.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argument_count, char** arguments) {
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(&argument_count, &arguments);
    int files = 0;
    for (int i = 1; i < argument_count; ++i) {
        const fs::path path = arguments[i];
        if (!fs::is_directory(path)) {
            replay(path);
            ++files;
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
            replay(entry.path());
            ++files;
        }
    }
    return files > 0 ? 0 : 1;
}
