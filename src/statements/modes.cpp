// SPDX-License-Identifier: MIT
// MODE n, SET E n, SET F n, SET G n and SET N.
#include "statements/modes.h"

#include "core/arguments.h"
#include "core/charset.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program_text.h"
#include "core/scanner.h"
#include "statements/signatures.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_SET_NO_DIGIT{"SET", 0};
constexpr MessageId MESSAGE_SET_SYNTAX{"SET", 1};
constexpr MessageId MESSAGE_SET_G_RANGE{"SET", 2};
constexpr int SET_G_MAX = 18;

void raise_set_syntax(Machine& m) {
    raise_error(m, ERROR_SYNTAX, MESSAGE_SET_SYNTAX, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
}

/// The operand of SET as characters: its letter and digits may be parts of other tokens.
struct SetOperand {
    TokenIndex token; ///< the first token of the operand
    const char* text; ///< its first character
};

SetOperand set_operand(const Machine& m) { return {m.eval.next, source_at(m, token_at(m, m.eval.next).begin)}; }

/// Reads the token at `text`, which lies in the operand's line. It is the `count`th after the operand's first one, or
/// the rest of a longer one, which then is only named.
void read_token_at(Machine& m, const SetOperand& operand, TokenIndex count, const char* text) {
    const SourceOffset start = token_at(m, operand.token).begin;
    const Token found = scan_token(text);
    const auto begin = start + static_cast<SourceOffset>(found.begin - operand.text);
    m.eval.next = operand.token + count;
    if (token_at(m, m.eval.next).begin == begin) {
        next_token(m);
        return;
    }
    m.eval.token = found.code;
    m.eval.token_start = begin;
}

/// One or two digits with no blank between them, and the end of the statement; -1 after an error.
int read_set_digits(Machine& m, const SetOperand& operand) {
    const char* p = skip_blanks(operand.text + 1);
    if (!is_digit(*p)) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_SET_NO_DIGIT);
        return -1;
    }
    int number = *p++ - '0';
    if (is_digit(*p))
        number = number * 10 + (*p++ - '0');
    read_token_at(m, operand, 2, p);
    if (is_statement_end(m.eval.token))
        return number;
    raise_set_syntax(m);
    return -1;
}

void set_digits(Machine& m, const SetOperand& operand) {
    const char letter = to_upper(*operand.text);
    const int number = read_set_digits(m, operand);
    if (number < 0)
        return;
    if (letter == 'E')
        m.settings.set_e_digits = number;
    else if (letter == 'F')
        m.settings.set_f_digits = number;
    else if (number <= SET_G_MAX)
        m.settings.set_g_digits = number;
    else
        raise_error(m, ERROR_SYNTAX, MESSAGE_SET_G_RANGE);
}

/// What follows SET N is left to the statement's end.
void set_automatic(Machine& m, const SetOperand& operand) {
    read_token_at(m, operand, 1, operand.text + 1);
    if (!is_statement_end(m.eval.token))
        return;
    m.settings.set_e_digits = -1;
    m.settings.set_f_digits = -1;
}

} // namespace

void mode_statement(Machine& m) {
    constexpr int PRT_ON = 7;
    Arguments arguments;
    if (!read_arguments(m, signature_of<TOKEN_MODE>(), arguments))
        return;
    const int n = truncate_to_int(round6(arguments.number[0]));
    if (n < PRT_ON)
        m.settings.angle_unit = static_cast<AngleUnit>(n - 4);
    else
        m.screen.print_mode = n == PRT_ON;
}

void set_statement(Machine& m) {
    const SetOperand operand = set_operand(m);
    switch (to_upper(*operand.text)) {
    case 'E':
    case 'F':
    case 'G': return set_digits(m, operand);
    case 'N': return set_automatic(m, operand);
    default: return raise_set_syntax(m);
    }
}

} // namespace quillon
