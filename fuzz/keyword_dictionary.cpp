// SPDX-License-Identifier: MIT
// Writes the vocabulary as a dictionary for the fuzzers: every word in quotes, a line each.
#include "core/keywords.h"

#include <cstdio>

int main() {
    for (const quillon::Keyword& word : quillon::vocabulary()) {
        std::printf("\"");
        for (const char c : word.spelling)
            std::printf("\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        std::printf("\"\n");
    }
}
