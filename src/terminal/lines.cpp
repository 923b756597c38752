// Reading lines of input.
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

} // namespace quillon
