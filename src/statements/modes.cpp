// MODE n, SET E n, SET F n, SET G n and SET N.
#include "statements/modes.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/scanner.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_MODE_MISSING{"MODE", 0};
constexpr MessageId MESSAGE_MODE_STRING{"MODE", 1};
constexpr MessageId MESSAGE_MODE_RANGE{"MODE", 2};
constexpr MessageId MESSAGE_SET_NO_DIGIT{"SET", 0};
constexpr MessageId MESSAGE_SET_SYNTAX{"SET", 1};
constexpr MessageId MESSAGE_SET_G_RANGE{"SET", 2};
constexpr int SET_G_MAX = 18;

void raise_set_syntax(Machine& m) {
    raise_error(m, ERROR_SYNTAX, MESSAGE_SET_SYNTAX, ":0x%04x (TOKEN_ID)", static_cast<unsigned>(m.token));
}

/// The next character of the program text that is no blank; the end of the line is never passed.
char take_char(Machine& m) {
    m.scan_ptr = skip_blanks(m.scan_ptr);
    return *m.scan_ptr == '\0' ? '\0' : *m.scan_ptr++;
}

/// One or two digits with no blank between them, and the end of the statement; -1 after an error.
int read_set_digits(Machine& m) {
    const char first = take_char(m);
    if (!is_digit(first)) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_SET_NO_DIGIT);
        return -1;
    }
    int number = first - '0';
    if (is_digit(*m.scan_ptr))
        number = number * 10 + (*m.scan_ptr++ - '0');
    if (is_statement_end(next_token(m)))
        return number;
    raise_set_syntax(m);
    return -1;
}

void set_digits(Machine& m, char letter) {
    const int number = read_set_digits(m);
    if (number < 0)
        return;
    if (letter == 'E')
        m.set_e_digits = number;
    else if (letter == 'F')
        m.set_f_digits = number;
    else if (number <= SET_G_MAX)
        m.set_g_digits = number;
    else
        raise_error(m, ERROR_SYNTAX, MESSAGE_SET_G_RANGE);
}

/// What follows SET N is left to the statement's end.
void set_automatic(Machine& m) {
    if (!is_statement_end(next_token(m)))
        return;
    m.set_e_digits = -1;
    m.set_f_digits = -1;
}

} // namespace

void mode_statement(Machine& m) {
    constexpr int PRT_ON = 7;
    m.value.kind = VALUE_NONE;
    const double mode = eval_statement(m);
    if (m.error_code != ERROR_NONE)
        return;
    if (m.value.kind == VALUE_NONE)
        return raise_error(m, ERROR_SYNTAX, MESSAGE_MODE_MISSING);
    if (m.value.kind == VALUE_STRING)
        return raise_error(m, ERROR_SYNTAX, MESSAGE_MODE_STRING);
    if (!(mode >= 4 && mode <= 8))
        return raise_error(m, ERROR_SYNTAX, MESSAGE_MODE_RANGE);
    const int n = truncate_to_int(round6(mode));
    if (n < PRT_ON)
        m.angle_unit = n - 4;
    else
        m.print_mode = n == PRT_ON ? 1 : 0;
}

void set_statement(Machine& m) {
    const char letter = to_upper(take_char(m));
    switch (letter) {
    case 'E':
    case 'F':
    case 'G': set_digits(m, letter); break;
    case 'N': set_automatic(m); break;
    default: raise_set_syntax(m);
    }
}

} // namespace quillon
