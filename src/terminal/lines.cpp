// SPDX-License-Identifier: MIT
// Reading input with the C library.
#include "terminal/lines.h"

namespace quillon {

bool read_line(std::FILE* file, std::string& line, std::size_t limit) {
    line.clear();
    int c = std::getc(file);
    if (c == EOF)
        return false;
    for (; c != EOF && c != '\n'; c = std::getc(file)) {
        if (line.size() < limit)
            line.push_back(static_cast<char>(c));
    }
    return true;
}

bool read_rest(std::FILE* file, std::string& text, std::size_t limit) {
    char chunk[4096];
    while (text.size() <= limit) {
        const std::size_t count = std::fread(chunk, 1, sizeof chunk, file);
        if (count == 0)
            return std::ferror(file) == 0;
        text.append(chunk, count);
    }
    return false;
}

} // namespace quillon
