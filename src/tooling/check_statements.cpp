// SPDX-License-Identifier: MIT
// The statements, a row for each.
#include "tooling/check_reader.h"

#include "core/charset.h"
#include "core/machine.h"
#include "core/numbers.h"
#include "core/words.h"
#include "statements/signatures.h"

#include <algorithm>

namespace quillon {
namespace {

bool is_variable(TokenCode token) { return token == TOKEN_NUMVAR || token == TOKEN_STRVAR; }

void refuse_unsupported(StatementReader& r, const Token& word) {
    refuse(r, FindingKind::NO_STATEMENT, word.begin, "the machine has no statement " + describe(word));
}

/// Passes the rest of the statement unread.
void skip_statement(StatementReader& r) {
    bool ended_line = false;
    r.scan = skip_to_statement_end(r.scan, ended_line);
    r.token = ended_line ? TOKEN_END : TOKEN_COLON;
}

// Loops.

/// Which loop a control variable stands for.
int loop_of(const Token& variable) { return variable.subscripted ? ANY_LOOP : variable.letter; }

/// One of the three numbers of FOR.
void read_loop_number(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    read_argument(r);
    if (!r.failed && !may_be_number(r.value))
        refuse(r, FindingKind::BAD_STATEMENT, r.value.kind == VALUE_NONE ? r.scanned.begin : at,
               "a number must stand here");
}

void read_for(StatementReader& r) {
    const Token variable = scan_token(r.scan);
    next(r);
    // Noted whatever is wrong with it, so that its NEXT is not blamed too.
    add_step(r, Step::FOR, variable.code == TOKEN_NUMVAR ? loop_of(variable) : ANY_LOOP, variable.begin);
    if (r.failed)
        return;
    if (r.token != TOKEN_NUMVAR)
        return refuse_shape(r, "a variable without \"$\" must stand behind FOR");
    next(r);
    if (r.token != TOKEN_EQUALS)
        return refuse_shape(r, "\"=\" is missing behind the variable of FOR");
    read_loop_number(r);
    if (!r.failed && r.token != TOKEN_TO)
        refuse_shape(r, "TO is missing");
    if (r.failed)
        return;
    read_loop_number(r);
    if (!r.failed && r.token == TOKEN_STEP)
        read_loop_number(r);
    if (!r.failed && !is_statement_end(r.token))
        refuse(r, FindingKind::TEXT_AFTER_STATEMENT, r.scanned.begin, describe(r.scanned) + " behind a whole FOR");
}

void read_next(StatementReader& r) {
    const char* at = r.scanned.begin;
    const Token variable = scan_token(r.scan);
    next(r);
    const bool named = !r.failed && r.token == TOKEN_NUMVAR;
    if (named)
        next(r);
    if (!r.failed && !is_statement_end(r.token))
        refuse(r, FindingKind::TEXT_AFTER_STATEMENT, r.scanned.begin, describe(r.scanned) + " behind a whole NEXT");
    add_step(r, Step::NEXT, named ? loop_of(variable) : ANY_LOOP, at);
}

// Data.

void read_read(StatementReader& r) {
    const char* at = r.scanned.begin;
    do {
        next(r);
        if (!r.failed && !is_variable(r.token))
            return refuse_shape(r, "READ needs a variable here");
        if (!r.failed)
            next(r);
    } while (!r.failed && r.token == TOKEN_COMMA);
    if (!r.listing.has_data)
        refuse(r, FindingKind::NO_DATA, at, "the listing has no DATA to read");
}

/// RESTORE and the number of a line with DATA.
void read_restore(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    read_by_signature(r, signature_of<TOKEN_RESTORE>());
    if (r.failed || r.value.kind == VALUE_NONE || !r.value.number)
        return;
    const int number = truncate_to_int(round6(*r.value.number));
    const CheckedArea& area = r.listing.areas[static_cast<std::size_t>(r.area)];
    const auto line = area.by_number.find(number);
    if (line == area.by_number.end() || !area.lines[static_cast<std::size_t>(line->second)].has_data)
        refuse(r, FindingKind::NO_SUCH_LINE, at, "there is no DATA in a line " + std::to_string(number));
}

// SET.

char take_char(StatementReader& r) {
    r.scan = skip_blanks(r.scan);
    return *r.scan == '\0' ? '\0' : *r.scan++;
}

void read_set_digits(StatementReader& r, char letter) {
    constexpr int SET_G_MAX = 18;
    const char* at = skip_blanks(r.scan);
    const char first = take_char(r);
    if (!is_digit(first))
        return refuse(r, FindingKind::BAD_STATEMENT, at, "a digit must stand behind SET E, SET F or SET G");
    int number = first - '0';
    if (is_digit(*r.scan))
        number = number * 10 + (*r.scan++ - '0');
    next(r);
    if (!is_statement_end(r.token))
        refuse(r, FindingKind::TEXT_AFTER_STATEMENT, r.scanned.begin, describe(r.scanned) + " behind a whole SET");
    else if (letter == 'G' && number > SET_G_MAX)
        refuse(r, FindingKind::OUT_OF_RANGE, at, "SET G takes 0 to 18");
}

void read_set(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    const char letter = to_upper(take_char(r));
    if (letter == 'E' || letter == 'F' || letter == 'G')
        read_set_digits(r, letter);
    else if (letter == 'N')
        next(r);
    else
        refuse(r, FindingKind::BAD_STATEMENT, at, "SET needs E, F, G or N");
}

// The rest.

void read_run(StatementReader& r) {
    next(r);
    r.leaves_line = true;
    if (r.failed || is_statement_end(r.token))
        return;
    if (r.token != TOKEN_NUMBER)
        return refuse_shape(r, "a line number, or nothing, must stand behind RUN");
    note_line(r, r.scanned.begin);
    next(r);
}

/// What the statement takes is all in its signature.
void read_regular(StatementReader& r) { read_by_signature(r, *find_statement_signature(r.token)); }

/// A word that the machine knows and always refuses.
void read_unsupported(StatementReader& r) { refuse_unsupported(r, r.scanned); }

void read_let(StatementReader& r) {
    next(r);
    if (r.failed)
        return;
    if (is_variable(r.token))
        next_behind_operand(r);
    else
        refuse_shape(r, "a variable must stand behind LET");
}

void read_rem(StatementReader& r) { r.token = TOKEN_END; }

void read_one_token(StatementReader& r) { next(r); }

void read_stop(StatementReader&) {}

/// A statement word and how what follows it is read.
struct WordShape {
    TokenCode token;
    StmtKind kind; ///< the context that the word sets, KIND_NONE for none
    void (*read)(StatementReader&);
};

// PRINT and INPUT only set their context: their lists are read_statement's.
// clang-format off
constexpr WordShape STATEMENT_SHAPES[] = {
    {TOKEN_PRINT,    KIND_PRINT,     read_stop},
    {TOKEN_INPUT,    KIND_INPUT,     read_stop},
    {TOKEN_GOTO,     KIND_JUMP,      read_goto},
    {TOKEN_GOSUB,    KIND_JUMP,      read_gosub},
    {TOKEN_ON,       KIND_JUMP,      read_on},
    {TOKEN_RETURN,   KIND_NONE,      read_return},
    {TOKEN_IF,       KIND_CONDITION, read_if},
    {TOKEN_FOR,      KIND_FOR,       read_for},
    {TOKEN_NEXT,     KIND_NONE,      read_next},
    {TOKEN_STOP,     KIND_NONE,      read_stop},
    {TOKEN_END_WORD, KIND_NONE,      leave_line},
    {TOKEN_COMMAND,  KIND_NONE,      leave_line},
    {TOKEN_RUN,      KIND_NONE,      read_run},
    {TOKEN_MODE,     KIND_NONE,      read_regular},
    {TOKEN_SET,      KIND_NONE,      read_set},
    {TOKEN_BEEP,     KIND_NONE,      read_regular},
    {TOKEN_BEEPS,    KIND_NONE,      read_regular},
    {TOKEN_BEEPWAIT, KIND_NONE,      read_one_token},
    {TOKEN_VAC,      KIND_NONE,      read_one_token},
    {TOKEN_READ,     KIND_NONE,      read_read},
    {TOKEN_RESTORE,  KIND_NONE,      read_restore},
    {TOKEN_GLOAD,    KIND_NONE,      read_regular},
    {TOKEN_LET,      KIND_NONE,      read_let},
    {TOKEN_REM,      KIND_NONE,      read_rem},
    {TOKEN_DATA,     KIND_NONE,      skip_statement},
    {TOKEN_LIST,     KIND_NONE,      skip_statement},
    {TOKEN_CLEAR,    KIND_NONE,      skip_statement},
    {TOKEN_DEFM,     KIND_NONE,      skip_statement},
    {TOKEN_SAVE,     KIND_NONE,      skip_statement},
    {TOKEN_LOAD,     KIND_NONE,      skip_statement},
    {TOKEN_PUT,      KIND_NONE,      skip_statement},
    {TOKEN_GET,      KIND_NONE,      skip_statement},
    {TOKEN_VERIFY,   KIND_NONE,      skip_statement},
    {TOKEN_PASS,     KIND_NONE,      skip_statement},
    {TOKEN_READ_FILE,    KIND_NONE,  read_unsupported},
    {TOKEN_RESTORE_FILE, KIND_NONE,  read_unsupported},
    {TOKEN_WRITE_FILE,   KIND_NONE,  read_unsupported},
};
// clang-format on

static_assert(has_all_statements(STATEMENT_SHAPES), "each statement needs one row; core/words.h says which there are");

} // namespace

void read_statement_word(StatementReader& r) {
    const auto* shape = std::find_if(std::begin(STATEMENT_SHAPES), std::end(STATEMENT_SHAPES),
                                     [&r](const WordShape& row) { return row.token == r.token; });
    if (shape == std::end(STATEMENT_SHAPES))
        return refuse_unsupported(r, r.scanned);
    r.kind = shape->kind != KIND_NONE ? shape->kind : r.kind;
    shape->read(r);
    if (r.leaves_line && r.token != TOKEN_END)
        r.token = TOKEN_COLON; // the machine has gone on elsewhere
}

void read_print_list(StatementReader& r) {
    do {
        read_sum(r);
        if (r.failed || is_statement_end(r.token))
            break;
        if (r.token != TOKEN_COMMA && r.token != TOKEN_SEMICOLON)
            refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin, describe(r.scanned) + " in the list of PRINT");
    } while (!r.failed);
    if (r.prev_token == TOKEN_COMMA)
        refuse_shape(r, "the list of PRINT ends with \",\"");
}

void read_input_list(StatementReader& r) {
    for (next(r); !r.failed && !is_statement_end(r.token); next(r)) {
        if (r.token == TOKEN_COMMA)
            continue;
        if (r.token == TOKEN_STRING) {
            next(r);
            const bool comma = r.token == TOKEN_COMMA;
            if (comma)
                next(r);
            if (!r.failed && (!comma || !is_variable(r.token)))
                return refuse_shape(r, "\",\" and a variable must stand behind the prompt of INPUT");
        }
        if (r.failed || !is_variable(r.token))
            return refuse_token(r);
        const Token behind = scan_token(r.scan);
        if (!is_statement_end(behind.code) && behind.code != TOKEN_COMMA) {
            next(r);
            return refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin,
                          describe(r.scanned) + " in the list of INPUT");
        }
    }
}

} // namespace quillon
