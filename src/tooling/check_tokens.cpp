// SPDX-License-Identifier: MIT
// Tokens: words, literals and variables, and reports about them.
#include "tooling/check_reader.h"

#include "core/charset.h"
#include "core/interpreter.h"
#include "core/keywords.h"
#include "core/numbers.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace quillon {
namespace {

constexpr std::size_t LITERAL_CAPACITY = 127; ///< of an operand

bool is_letter(char c) { return to_lower(c) >= 'a' && to_lower(c) <= 'z'; }

std::string upper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), to_upper);
    return result;
}

std::string word_of(const Token& token) {
    constexpr std::size_t SHOWN_MAX = 40;
    const std::string word = upper(word_text(token).view());
    return word.size() > SHOWN_MAX ? word.substr(0, SHOWN_MAX) + "..." : word;
}

/// The finding for a token that cannot be read.
FindingKind kind_of(ScanFault fault) {
    switch (fault) {
    case ScanFault::BAD_NUMBER: return FindingKind::BAD_NUMBER;
    case ScanFault::BAD_LITERAL: return FindingKind::BAD_LITERAL;
    case ScanFault::BAD_AMPERSAND: return FindingKind::BAD_AMPERSAND;
    default: return FindingKind::UNKNOWN_WORD;
    }
}

std::string text_of(const Token& token) {
    switch (token.fault) {
    case ScanFault::BAD_NUMBER: return "this is no number: two points, or more than 125 characters";
    case ScanFault::BAD_LITERAL: return "unknown escape in a string literal; a backslash is written \\\\";
    case ScanFault::BAD_AMPERSAND: return "\"&\" without \"H\"";
    default: return "unknown word " + word_of(token);
    }
}

/// The vocabulary's own spelling of a word that is in it.
bool is_in_vocabulary(const std::string& word) {
    const auto words = vocabulary();
    return std::any_of(words.begin(), words.end(), [&word](const Keyword& k) { return k.spelling == word; });
}

/// A word that stands for another because the machine only compares sums over the letters.
void look_at_word(StatementReader& r, const Token& token) {
    const std::string word = word_of(token);
    if (is_in_vocabulary(word))
        return;
    for (const Keyword& keyword : vocabulary()) {
        if (keyword.code == token.code) {
            warn(r, FindingKind::MISSPELT_WORD, token.begin,
                 word + " is no word of the language; the machine takes it for " + std::string(keyword.spelling));
            return;
        }
    }
}

void look_at_literal(StatementReader& r, const Token& token) {
    if (token.end[-1] != '"' || token.end - token.begin < 2)
        warn(r, FindingKind::UNCLOSED_LITERAL, token.begin, "the string literal is not closed; it ends with the line");
    std::size_t length = 0;
    for (const char* p = token.begin + 1; p < token.end && *p != '"'; ++length)
        read_char(p);
    if (length > LITERAL_CAPACITY)
        warn(r, FindingKind::LITERAL_CUT, token.begin, "the string literal is cut to 127 characters");
}

void look_at_token(StatementReader& r, const Token& token) {
    if (token.code == TOKEN_STRING)
        look_at_literal(r, token);
    else if (is_letter(*token.begin) && token.code >= TOKEN_MOD)
        look_at_word(r, token);
}

/// Whether a cell with this index is there, where the text tells it.
void check_cell(StatementReader& r, const Token& token, const CheckedOperand& index) {
    constexpr int CELLS = CELL_COUNT - 1;
    if (!index.number)
        return;
    const std::int64_t cell = std::int64_t{token.letter} + truncate_to_int(round6(*index.number));
    if (cell < 0 || cell >= CELLS)
        refuse(r, FindingKind::OUT_OF_RANGE, token.begin,
               "no such cell: subscripts reach from A(0) to A(" + std::to_string(CELLS - 1) + ")");
}

void read_subscript(StatementReader& r, const Token& token) {
    const TokenCode prev_token = r.prev_token;
    r.token = TOKEN_OPEN;
    r.scan = token.end + 1;
    r.value = {};
    if (!descend(r))
        return;
    r.may_lack = true;
    read_statement(r);
    --r.depth;
    if (r.failed)
        return;
    if (r.token != TOKEN_CLOSE)
        warn(r, FindingKind::MISSING_PARENTHESIS, token.begin, "the subscript has no \")\"");
    r.prev_token = prev_token;
    check_cell(r, token, r.value);
}

void take_variable(StatementReader& r, const Token& token) {
    if (token.subscripted && token.letter != DOLLAR_LETTER)
        read_subscript(r, token);
    r.token = token.code;
    r.value = {};
    r.value.kind = static_cast<ValueKind>(token.code);
    r.value.dollar = token.letter == DOLLAR_LETTER;
    r.value.at = token.begin;
}

void take_literal(StatementReader& r, const Token& token) {
    r.value = {};
    r.value.kind = static_cast<ValueKind>(token.code);
    r.value.at = token.begin;
    TokenText text;
    if (token.code == TOKEN_STRING) {
        read_literal(token, text);
        r.value.text = text.view();
    } else {
        r.value.number = token.number;
    }
    r.value.length = text.size();
}

Token scan_next(StatementReader& r) {
    const Token token = scan_token(r.scan);
    look_at_token(r, token);
    r.scanned = token;
    r.prev_token = r.token;
    r.scan = token.end;
    r.token = token.code;
    return token;
}

} // namespace

std::string describe(const Token& token) {
    if (token.code == TOKEN_END)
        return "the end of the line";
    if (is_letter(*token.begin))
        return word_of(token);
    const std::string text(token.begin, std::min<std::size_t>(static_cast<std::size_t>(token.end - token.begin), 40));
    const bool printable = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
    if (printable)
        return token.code == TOKEN_STRING ? "a string literal" : '"' + text + '"';
    char hexadecimal[32];
    std::snprintf(hexadecimal, sizeof hexadecimal, "the character 0x%02X", as_byte(*token.begin));
    return hexadecimal;
}

OperandType type_of(const CheckedOperand& operand) {
    switch (operand.kind) {
    case VALUE_NUMBER: return OperandType::NUMBER;
    case VALUE_NUMVAR: return operand.numeric ? OperandType::NUMBER : OperandType::EITHER;
    case VALUE_STRVAR:
    case VALUE_STRING: return OperandType::STRING;
    default: return OperandType::NONE;
    }
}

bool is_string(const CheckedOperand& operand) { return type_of(operand) == OperandType::STRING; }

bool may_be_number(const CheckedOperand& operand) {
    return operand.kind == VALUE_NUMBER || operand.kind == VALUE_NUMVAR;
}

void refuse(StatementReader& r, FindingKind kind, const char* at, std::string text) {
    if (r.failed)
        return;
    r.failed = true;
    const CheckedLine& line = line_of(r.listing, r.area, r.line);
    if (at == r.scanned.begin && r.scanned.fault != ScanFault::NONE)
        add_finding(r.listing, kind_of(r.scanned.fault), true, line, at, text_of(r.scanned));
    else
        add_finding(r.listing, kind, true, line, at, std::move(text));
}

void warn(StatementReader& r, FindingKind kind, const char* at, std::string text) {
    if (!r.failed)
        add_finding(r.listing, kind, false, line_of(r.listing, r.area, r.line), at, std::move(text));
}

void refuse_token(StatementReader& r) {
    if (is_statement_end(r.scanned.code))
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "something is missing before " + describe(r.scanned));
    else
        refuse(r, FindingKind::UNEXPECTED, r.scanned.begin, describe(r.scanned) + " cannot stand here");
}

void add_step(StatementReader& r, Step::Kind kind, int value, const char* at) {
    constexpr std::size_t STEPS_MAX = 200'000; // far more than a listing that makes sense has
    r.listing.steps_known = r.listing.steps_known && r.listing.steps.size() < STEPS_MAX;
    if (r.listing.steps_known)
        r.listing.steps.push_back({kind, r.area, r.line, value, at, r.conditional});
}

bool descend(StatementReader& r) {
    if (r.depth >= NESTING_DEPTH_MAX) {
        refuse(r, FindingKind::NESTED_TOO_DEEP, r.scanned.begin, "nested too deeply");
        return false;
    }
    ++r.depth;
    return true;
}

void next(StatementReader& r) {
    const Token token = scan_next(r);
    switch (token.code) {
    case TOKEN_NUMVAR:
    case TOKEN_STRVAR: return take_variable(r, token);
    case TOKEN_NUMBER:
    case TOKEN_STRING: return take_literal(r, token);
    default: return;
    }
}

void next_behind_operand(StatementReader& r) {
    const CheckedOperand operand = r.value;
    next(r);
    r.value = operand;
}

} // namespace quillon
