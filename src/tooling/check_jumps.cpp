// SPDX-License-Identifier: MIT
// Jumps and conditions: GOTO, GOSUB, RETURN, ON, IF.
#include "tooling/check_reader.h"

#include "core/machine.h"
#include "core/numbers.h"

namespace quillon {
namespace {

void read_area(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    read_argument(r);
    if (r.failed)
        return;
    if (!may_be_number(r.value))
        return refuse(r, FindingKind::WRONG_TYPE, at, "the number of an area must stand behind \"#\"");
    if (!r.value.number)
        return add_step(r, Step::TO_ANY_AREA, 0, at);
    const int number = truncate_to_int(*r.value.number);
    if (number < 0 || number >= AREA_COUNT)
        refuse(r, FindingKind::OUT_OF_RANGE, at, "the areas are #0 to #9");
    else if (find_area(r.listing, number) != nullptr)
        add_step(r, Step::TO_AREA, number, at);
    else if (r.listing.all_areas_known)
        refuse(r, FindingKind::NO_SUCH_AREA, at,
               "area P" + std::to_string(number) + " has no program: the run ends here");
}

/// A jump's target. False where it is none: something that is no number.
bool read_target(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    read_argument(r);
    if (r.failed)
        return true;
    if (r.token == TOKEN_HASH)
        read_area(r);
    else if (may_be_number(r.value))
        note_line(r, at);
    else
        return false;
    return true;
}

void require_target(StatementReader& r) {
    const char* at = skip_blanks(r.scan);
    if (!read_target(r))
        refuse(r, FindingKind::BAD_STATEMENT, at, "a line number, or \"#\" and an area, must stand here");
}

/// THEN with a number, a variable or "#" is a jump; true when it is one.
bool read_jump_behind_then(StatementReader& r) {
    const Token first = scan_token(r.scan);
    if (first.code >= STATEMENT_WORD)
        return false;
    if (is_statement_end(first.code)) {
        warn(r, FindingKind::NO_EFFECT, first.begin, "nothing stands behind THEN");
        return false;
    }
    r.kind = KIND_JUMP;
    const bool jumps = read_target(r);
    if (jumps && !r.failed && first.code == TOKEN_NUMVAR && r.token == TOKEN_EQUALS) {
        warn(r, FindingKind::NEVER_REACHED, first.begin,
             "THEN and a variable is a jump to the line of that number; an assignment needs LET, or \";\" for THEN");
        r.token = TOKEN_END;
    }
    r.leaves_line = jumps;
    return jumps || r.failed;
}

} // namespace

void read_goto(StatementReader& r) {
    require_target(r);
    r.leaves_line = true;
}

void read_gosub(StatementReader& r) {
    require_target(r);
    add_step(r, Step::CALL, 0, r.scanned.begin);
    // RETURN leads behind the token that was read last, whatever it is.
    r.rest_taken = !is_statement_end(r.token);
    r.token = r.token == TOKEN_END ? TOKEN_END : TOKEN_COLON;
}

void read_return(StatementReader& r) {
    add_step(r, Step::RETURN, 0, r.scanned.begin);
    leave_line(r);
}

void read_on(StatementReader& r) {
    read_argument(r);
    if (r.failed)
        return;
    if (r.token != TOKEN_GOTO && r.token != TOKEN_GOSUB)
        return refuse_shape(r, "GOTO or GOSUB is missing behind ON and its number");
    if (r.token == TOKEN_GOSUB)
        add_step(r, Step::CALL, 0, r.scanned.begin);
    r.skips_line = true;
    do
        require_target(r);
    while (!r.failed && r.token == TOKEN_COMMA);
    if (!r.failed && !is_statement_end(r.token))
        refuse_shape(r, "\",\" or the end of the statement must stand here");
    r.leaves_line = true; // the line after it is next, when not one of the targets
}

void read_if(StatementReader& r) {
    read_statement(r);
    if (r.failed)
        return;
    if (r.token != TOKEN_THEN && r.token != TOKEN_SEMICOLON)
        return refuse_shape(r, "THEN or \";\" is missing behind the condition");
    r.conditional = true;
    const char* behind = r.scan;
    if (r.token == TOKEN_THEN && read_jump_behind_then(r))
        return;
    r.kind = KIND_NONE;
    r.token = TOKEN_COLON;
    r.scan = behind;
}

void note_line(StatementReader& r, const char* at) {
    if (!r.value.number)
        return add_step(r, Step::TO_ANY_LINE, 0, at);
    const int number = truncate_to_int(round6(*r.value.number));
    const auto& lines = r.listing.areas[static_cast<std::size_t>(r.area)].by_number;
    if (lines.find(number) == lines.end())
        return refuse(r, FindingKind::NO_SUCH_LINE, at, "there is no line " + std::to_string(number));
    add_step(r, Step::TO_LINE, number, at);
}

void leave_line(StatementReader& r) {
    r.leaves_line = true;
    next(r);
}

void refuse_shape(StatementReader& r, const char* text) {
    refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin, text);
}

} // namespace quillon
