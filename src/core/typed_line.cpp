// SPDX-License-Identifier: MIT
// Tokens of a typed line.
#include "core/program_token.h"

namespace quillon {

void set_typed_line(TypedLine& line, std::string_view text) {
    line.text = text;
    line.literals.clear();
    const char* start = line.text.c_str();
    Token token;
    token.end = start;
    std::size_t count = 0;
    do {
        token = scan_token(token.end);
        const auto begin = TYPED + static_cast<SourceOffset>(token.begin - start);
        line.tokens[count++] = make_program_token(token, begin, line.literals);
    } while (token.code != TOKEN_END);
    std::fill(line.tokens.begin() + static_cast<std::ptrdiff_t>(count), line.tokens.end(), line.tokens[count - 1]);
}

} // namespace quillon
