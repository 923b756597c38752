// SPDX-License-Identifier: MIT
// Jumps to lines and areas, and the return stack.
#include "statements/jumps.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program.h"
#include "core/run_control.h"
#include "core/variables.h"

namespace quillon {
namespace {

/// The texts of a jump statement: it has one for each way in which a target can be wrong. Those that ON gives do not
/// name the offending number.
struct JumpMessages {
    MessageId area_literal;
    MessageId area_string;
    MessageId area_range;
    MessageId area_empty;
    MessageId not_a_number;
    MessageId no_such_line;
    bool with_number;
};

// clang-format off
//                                    "#" literal   "#" string    area range    area empty    no number     no line
constexpr JumpMessages GOTO_MESSAGES {{"GOTO",  0}, {"GOTO",  1}, {"GOTO",  2}, {"GOTO",  3}, {"GOTO",  4}, {"GOTO",  5}, true};
constexpr JumpMessages GOSUB_MESSAGES{{"GOSUB", 1}, {"GOSUB", 2}, {"GOSUB", 3}, {"GOSUB", 4}, {"GOSUB", 5}, {"GOSUB", 6}, true};
constexpr JumpMessages ON_MESSAGES   {{"ON",    3}, {"ON",    4}, {"ON",    5}, {"ON",    6}, {"ON",    2}, {"ON",    7}, false};
// clang-format on

constexpr MessageId MESSAGE_GOSUB_DEPTH{"GOSUB", 0};
constexpr MessageId MESSAGE_RETURN_EMPTY{"RETURN", 0};
constexpr MessageId MESSAGE_ON_SYNTAX{"ON", 0};
constexpr MessageId MESSAGE_ON_DEPTH{"ON", 1};

void raise_with_number(Machine& m, const JumpMessages& messages, ErrorCode code, MessageId message, int number) {
    if (messages.with_number)
        raise_error(m, code, message, "[%d]", number);
    else
        raise_error(m, code, message);
}

void push_frame(Machine& m) {
    ProgramPosition& p = m.program;
    p.gosub_frames[static_cast<std::size_t>(p.gosub_depth++)] = {p.cur_area, p.cur_line, m.eval.next};
}

/// How a subroutine is entered, beside the jump itself.
enum class Call {
    NONE,           ///< no call
    RETURN_AFTER,   ///< returns to after the statement
    RETURN_TO_LINE, ///< returns to the line after the statement's
};

void push_call(Machine& m, Call call) {
    if (call == Call::RETURN_TO_LINE)
        advance_line(m);
    if (call != Call::NONE)
        push_frame(m);
}

/// An area without a program ends the run without an error text; the detail says why.
void report_empty_area(Machine& m, const JumpMessages& messages, int area) {
    if (messages.with_number)
        compose_detail(m, messages.area_empty, "[%d]", area);
    else
        compose_detail(m, messages.area_empty);
    end_at_empty_area(m);
}

/// Evaluates the area number behind "#". False after an error.
bool eval_area(Machine& m, const JumpMessages& messages, int& area) {
    area = truncate_to_int(eval_argument(m));
    if (failed(m))
        return false;
    if (m.eval.value.kind == VALUE_STRING)
        raise_error(m, ERROR_SYNTAX, messages.area_literal);
    else if (value_type(m) == TYPE_STRING)
        raise_error(m, ERROR_SYNTAX, messages.area_string);
    else if (!is_number(m))
        raise_error(m, ERROR_SYNTAX, messages.not_a_number);
    else if (area < 0 || area >= AREA_COUNT)
        raise_with_number(m, messages, ERROR_RANGE, messages.area_range, area);
    return !failed(m);
}

void jump_to_area(Machine& m, const JumpMessages& messages, Call call) {
    int area = 0;
    if (!eval_area(m, messages, area))
        return;
    if (area_is_empty(m, area))
        return report_empty_area(m, messages, area);
    push_call(m, call);
    m.eval.next = select_area(m, area);
    enter_area(m, call == Call::RETURN_AFTER);
    finish_jump(m);
}

void jump_to_line(Machine& m, const JumpMessages& messages, int number, Call call) {
    const int line = find_line(*m.listing, m.program.cur_area, number);
    if (line < 0)
        return raise_with_number(m, messages, ERROR_LINE, messages.no_such_line, number);
    push_call(m, call);
    m.program.cur_line = line;
    m.eval.next = line_start(m, line);
    finish_jump(m);
}

/// GOTO and THEN. `is_goto` is false behind THEN, where something else than a number is a statement.
void jump(Machine& m, bool is_goto) {
    const double target = eval_argument(m);
    if (failed(m))
        return;
    if (m.eval.token == TOKEN_HASH)
        jump_to_area(m, GOTO_MESSAGES, Call::NONE);
    else if (is_number(m))
        jump_to_line(m, GOTO_MESSAGES, truncate_to_int(round6(target)), Call::NONE);
    else if (is_goto)
        raise_error(m, ERROR_SYNTAX, GOTO_MESSAGES.not_a_number);
}

/// The rest of the line is skipped: ON has no target for its selector.
void skip_line(Machine& m) {
    m.eval.token = TOKEN_END;
    m.eval.stmt_kind = KIND_NONE;
}

/// Reads one target of ON. A "#" stays the current token; its area number follows.
bool eval_on_target(Machine& m, double& target) {
    target = eval_argument(m);
    if (!failed(m) && m.eval.token != TOKEN_HASH && !is_number(m))
        raise_error(m, ERROR_SYNTAX, ON_MESSAGES.not_a_number);
    return !failed(m);
}

/// Passes a target that was not chosen, up to the "," behind it. False after an error and at the end of the list.
bool pass_on_target(Machine& m) {
    if (m.eval.token == TOKEN_HASH) {
        eval_argument(m);
        if (!failed(m) && !is_number(m))
            raise_error(m, ERROR_SYNTAX, ON_MESSAGES.not_a_number);
        if (failed(m))
            return false;
    }
    if (m.eval.token == TOKEN_COMMA)
        return true;
    if (is_statement_end(m.eval.token))
        skip_line(m);
    else
        raise_error(m, ERROR_SYNTAX, MESSAGE_ON_SYNTAX, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
    return false;
}

void jump_to_chosen(Machine& m, int chosen, Call call) {
    double target = 0;
    for (int i = 1; i < chosen; ++i) {
        if (!eval_on_target(m, target) || !pass_on_target(m))
            return;
    }
    if (!eval_on_target(m, target))
        return;
    if (m.eval.token == TOKEN_HASH)
        jump_to_area(m, ON_MESSAGES, call);
    else
        jump_to_line(m, ON_MESSAGES, truncate_to_int(target), call);
}

} // namespace

void goto_statement(Machine& m) { jump(m, true); }

void jump_behind_then(Machine& m) { jump(m, false); }

void gosub_statement(Machine& m) {
    if (m.program.gosub_depth == GOSUB_DEPTH_MAX)
        return raise_error(m, ERROR_NESTING, MESSAGE_GOSUB_DEPTH, "[MAX:%d]", GOSUB_DEPTH_MAX);
    const double target = eval_argument(m);
    if (failed(m))
        return;
    if (m.eval.token == TOKEN_HASH)
        jump_to_area(m, GOSUB_MESSAGES, Call::RETURN_AFTER);
    else if (is_number(m))
        jump_to_line(m, GOSUB_MESSAGES, truncate_to_int(target), Call::RETURN_AFTER);
    else
        raise_error(m, ERROR_SYNTAX, GOSUB_MESSAGES.not_a_number);
}

void return_statement(Machine& m) {
    if (m.program.gosub_depth == 0)
        return raise_error(m, ERROR_NESTING, MESSAGE_RETURN_EMPTY);
    const GosubFrame& frame = m.program.gosub_frames[static_cast<std::size_t>(--m.program.gosub_depth)];
    m.program.cur_line = frame.line;
    m.program.cur_area = frame.area;
    m.eval.next = frame.next;
    finish_jump(m);
}

void on_statement(Machine& m) {
    const int chosen = truncate_to_int(eval_argument(m));
    if (failed(m))
        return;
    const bool calls = m.eval.token == TOKEN_GOSUB;
    if (!calls && m.eval.token != TOKEN_GOTO)
        return raise_error(m, ERROR_SYNTAX, MESSAGE_ON_SYNTAX, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
    if (chosen < 1)
        return skip_line(m);
    if (calls && m.program.gosub_depth == GOSUB_DEPTH_MAX)
        return raise_error(m, ERROR_NESTING, MESSAGE_ON_DEPTH, " [MAX:%d]", GOSUB_DEPTH_MAX);
    jump_to_chosen(m, chosen, calls ? Call::RETURN_TO_LINE : Call::NONE);
}

} // namespace quillon
