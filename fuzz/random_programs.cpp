// SPDX-License-Identifier: MIT
// Composing programs from the grammar in random_programs.txt.
#include "fuzz/random_programs.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <vector>

namespace quillon::fuzz {
namespace {

constexpr int DEEPEST = 10;
constexpr const char* GRAMMAR_FILE = QUILLON_GRAMMAR;

using Grammar = std::map<std::string, std::vector<std::string>>;

/// What each part may be, every row as often as it counts.
Grammar read_grammar() {
    Grammar grammar;
    std::ifstream file(GRAMMAR_FILE);
    std::string heading;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== "))
            heading = line.substr(3);
        if (line.starts_with('#') || line.find(" => ") == std::string::npos)
            continue;
        line += " ;; "; // rows lie side by side
        for (std::size_t end = 0; (end = line.find(" ;; ")) != std::string::npos; line.erase(0, end + 4)) {
            const std::size_t arrow = line.find(" => ");
            grammar[heading].insert(grammar[heading].end(), std::stoul(line), line.substr(arrow + 4, end - arrow - 4));
        }
    }
    return grammar;
}

const std::vector<std::string>& choices_of(const std::string& part) {
    static const Grammar GRAMMAR = read_grammar();
    const auto found = GRAMMAR.find(part);
    if (found == GRAMMAR.end()) {
        std::fprintf(stderr, "%s has no part \"%s\"\n", GRAMMAR_FILE, part.c_str());
        std::abort();
    }
    return found->second;
}

} // namespace

RandomProgram::RandomProgram(std::uint32_t seed)
    : below_([engine = std::mt19937(seed)](int n) mutable {
          return static_cast<int>(engine() % static_cast<std::uint32_t>(n));
      }) {}

std::string RandomProgram::made_of(const std::string& part, int depth) {
    if (part[0] >= '0' && part[0] <= '9') { // a range
        const int first = std::stoi(part);
        return std::to_string(first + below(std::stoi(part.substr(part.find('-') + 1)) - first + 1));
    }
    const std::vector<std::string>& choices = choices_of(part);
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

std::string RandomProgram::faulty_listing() {
    constexpr int AREAS_MAX = 4;
    std::string made = made_of("before the areas", 0);
    for (int areas = below(AREAS_MAX); areas >= 0; --areas) {
        made += made_of("header", 0) + "\n";
        int number = 0;
        for (int lines = below(LINES); lines >= 0; --lines) {
            number += below(40) == 0 ? -10 : 10;
            made += std::to_string(number) + made_of("behind a number", 0) + statements() + made_of("fault of DATA", 0);
            made += made_of("end of a line", 0) + "\n";
        }
    }
    return made;
}

std::string RandomProgram::key() {
    constexpr const char* KEYS[] = {"1", "7", "A", ".", "-", "\x03", "\x06", "\x08"};
    return KEYS[below(static_cast<int>(std::size(KEYS)))];
}

} // namespace quillon::fuzz
