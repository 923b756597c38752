// SPDX-License-Identifier: MIT
// Reading tokens from program text.
#include "core/scanner.h"

#include "core/charset.h"
#include "core/keywords.h"
#include "core/numbers.h"

namespace quillon {
namespace {

constexpr char ESCAPE_KEY = 27; ///< ends a line as a NUL does
constexpr std::size_t WORD_MAX = 127;
constexpr std::size_t NUMBER_MAX = 125;

bool is_letter(char c) { return to_lower(c) >= 'a' && to_lower(c) <= 'z'; }
bool is_word_char(char c) { return is_letter(c) || c == '_'; }
bool ends_line(char c) { return c == '\0' || c == '\n' || c == '\r' || c == ESCAPE_KEY; }

std::string_view text_between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

void set_fault(Token& token, ScanFault fault) {
    token.code = TOKEN_LEXICAL_ERROR;
    token.fault = fault;
}

/// Digits and points; there is no exponent syntax, powers of ten are an operator.
void scan_number(Token& token) {
    const char* p = token.begin;
    int points = 0;
    for (; is_digit(*p) || *p == '.'; ++p)
        points += *p == '.' ? 1 : 0;
    token.end = p;
    const std::string_view text = text_between(token.begin, p);
    if (points > 1 || text.size() > NUMBER_MAX) {
        set_fault(token, ScanFault::BAD_NUMBER);
        return;
    }
    std::size_t used = 0;
    token.code = TOKEN_NUMBER;
    token.number = parse_decimal(text, used);
}

int hex_digit(char c) {
    if (is_digit(c))
        return c - '0';
    const char letter = to_lower(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

void scan_hexadecimal(Token& token) {
    const char* p = token.begin + 1;
    token.end = p;
    if (to_lower(*p) != 'h') {
        set_fault(token, ScanFault::BAD_AMPERSAND);
        return;
    }
    token.code = TOKEN_NUMBER;
    for (++p; hex_digit(*p) >= 0; ++p)
        token.number = token.number * 16 + hex_digit(*p);
    token.end = p;
}

/// A word whose second character would be "$", or that has no second one, is a variable.
void scan_word(Token& token) {
    const char* p = token.begin;
    while (is_word_char(*p) || *p == '$' || *p == '#')
        ++p;
    token.end = p;
    const std::string_view word = text_between(token.begin, p);
    if (word.size() == 1 || word[1] == '$') {
        token.code = word.back() == '$' ? TOKEN_STRVAR : TOKEN_NUMVAR;
        token.letter = to_lower(word[0]) - 'a';
        token.subscripted = *p == '(';
        return;
    }
    token.code = word.size() > WORD_MAX ? TOKEN_UNKNOWN : lookup_keyword(word);
    if (token.code == TOKEN_UNKNOWN)
        set_fault(token, ScanFault::UNKNOWN_WORD);
}

/// A literal without a closing quote ends with its line; the CR of a line end belongs to that.
bool ends_literal(const char* p) {
    return *p == '"' || *p == '\0' || *p == '\n' || (*p == '\r' && (p[1] == '\0' || p[1] == '\n'));
}

void scan_literal(Token& token) {
    token.code = TOKEN_STRING;
    const char* p = token.begin + 1;
    while (!ends_literal(p)) {
        const char* start = p;
        if (read_char(p) == BAD_ESCAPE && *start == '\\')
            set_fault(token, ScanFault::BAD_LITERAL);
    }
    token.end = *p == '"' ? p + 1 : p;
}

struct RelationPair {
    char first;
    char second;
    TokenCode code;
};

// clang-format off
constexpr RelationPair RELATION_PAIRS[] = {
    {'<', '>', TOKEN_NE},
    {'!', '=', TOKEN_NE},
    {'>', '=', TOKEN_GE},
    {'<', '=', TOKEN_LE},
    {'=', '=', TOKEN_EQEQ},
};
// clang-format on

void scan_relation(Token& token) {
    for (const RelationPair& pair : RELATION_PAIRS) {
        if (token.begin[0] == pair.first && token.begin[1] == pair.second) {
            token.code = pair.code;
            token.end = token.begin + 2;
            return;
        }
    }
}

void scan_dollar(Token& token) {
    token.code = TOKEN_STRVAR;
    token.letter = DOLLAR_LETTER;
}

} // namespace

const char* skip_blanks(const char* text) {
    while (*text == ' ' || *text == '\t' || *text == '\r')
        ++text;
    return text;
}

Token scan_token(const char* text) {
    Token token;
    token.begin = skip_blanks(text);
    token.end = token.begin;
    const char c = *token.begin;
    if (ends_line(c))
        return token;
    token.end = token.begin + 1;
    token.code = character_token(c);
    if (is_digit(c) || c == '.') {
        scan_number(token);
    } else if (is_letter(c)) {
        scan_word(token);
    } else {
        switch (as_byte(c)) {
        case ':': token.code = TOKEN_COLON; break;
        case '$': scan_dollar(token); break;
        case '"': scan_literal(token); break;
        case '&': scan_hexadecimal(token); break;
        case '!':
        case '=':
        case '>':
        case '<': scan_relation(token); break;
        case CHAR_PI: token.code = TOKEN_PI; break;
        case CHAR_EXPONENT: token.code = TOKEN_EX; break;
        case CHAR_NEGATIVE_EXPONENT: token.code = TOKEN_EM; break;
        default:
            if (as_byte(c) < ' ') // its code would be that of an operand
                token.code = TOKEN_UNKNOWN;
        }
    }
    return token;
}

void read_literal(const Token& token, TokenText& text) {
    const char* p = token.begin + 1;
    while (p < token.end && *p != '"' && *p != '\\')
        ++p;
    text.assign(text_between(token.begin + 1, p));
    while (p < token.end && *p != '"')
        text.push_back(static_cast<char>(read_char(p)));
}

TokenText word_text(const Token& token) {
    TokenText text;
    for (const char* p = token.begin; p < token.end; ++p)
        text.push_back(to_lower(*p));
    return text;
}

const char* skip_to_statement_end(const char* text, bool& ended_line) {
    Token token = scan_token(text);
    while (!is_statement_end(token.code))
        token = scan_token(token.end);
    ended_line = token.code == TOKEN_END;
    return token.end;
}

} // namespace quillon
