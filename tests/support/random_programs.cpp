// Composing programs from the grammar in random_programs.txt.
#include "tests/support/random_programs.h"

#include "tests/support/cases_file.h"
#include "tests/support/temporary_file.h"

#include <iterator>
#include <map>
#include <vector>

namespace quillon::testing {
namespace {

constexpr int DEEPEST = 10;

/// What each part may be, every row as often as it counts.
std::map<std::string, std::vector<std::string>> read_grammar() {
    std::map<std::string, std::vector<std::string>> grammar;
    for (const FileCase& row : parse_cases(bytes_of(QUILLON_TESTS "/support/random_programs.txt"), "random_programs"))
        grammar[row.heading].insert(grammar[row.heading].end(), std::stoul(row.input), row.expected);
    return grammar;
}

} // namespace

std::string RandomProgram::made_of(const std::string& part, int depth) {
    static const auto GRAMMAR = read_grammar();
    if (part[0] >= '0' && part[0] <= '9') { // a range
        const int first = std::stoi(part);
        return std::to_string(first + below(std::stoi(part.substr(part.find('-') + 1)) - first + 1));
    }
    const std::vector<std::string>& choices = GRAMMAR.at(part);
    std::string made = choices[depth > DEEPEST ? 0 : static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    for (std::size_t at = made.find('{'); at != std::string::npos; at = made.find('{', at)) {
        const std::size_t length = made.find('}', at) - at + 1;
        made.replace(at, length, made_of(made.substr(at + 1, length - 2), depth + 1));
    }
    return made;
}

std::string RandomProgram::statements() { return made_of("statements", 0); }

std::string RandomProgram::listing() {
    std::string made;
    for (int area = 0; area < 2; ++area) {
        made += "[P" + std::to_string(area) + "]\n";
        for (int line = 1; line <= LINES; ++line)
            made += std::to_string(10 * line) + " " + statements() + (below(5) == 0 ? "  " : "") + "\n";
    }
    return made;
}

std::string RandomProgram::key() {
    constexpr const char* KEYS[] = {"1", "7", "A", ".", "-", "\x03", "\x06", "\x08"};
    return KEYS[below(static_cast<int>(std::size(KEYS)))];
}

} // namespace quillon::testing
