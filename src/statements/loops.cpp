// SPDX-License-Identifier: MIT
// Counted loops on a stack of four frames. The body always runs once: only NEXT looks at the limit.
#include "statements/loops.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/variables.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_FOR_VARIABLE{"FOR", 0};
constexpr MessageId MESSAGE_FOR_EQUALS{"FOR", 1};
constexpr MessageId MESSAGE_FOR_SYNTAX{"FOR", 4};
constexpr MessageId MESSAGE_FOR_DEPTH{"FOR", 9};
constexpr MessageId MESSAGE_NEXT_NO_LOOP{"NEXT", 0};
constexpr MessageId MESSAGE_NEXT_SYNTAX{"NEXT", 1};
constexpr MessageId MESSAGE_NEXT_STRING{"NEXT", 2};
constexpr MessageId MESSAGE_NEXT_OTHER_VARIABLE{"NEXT", 3};
constexpr MessageId MESSAGE_NEXT_OTHER_AREA{"NEXT", 4};

/// The errors of one of FOR's three expressions.
struct ExpressionErrors {
    MessageId string_variable;
    ErrorCode string_variable_code;
    MessageId not_numeric;
};

constexpr ExpressionErrors START_ERRORS{{"FOR", 2}, ERROR_VARIABLE, {"FOR", 3}};
constexpr ExpressionErrors LIMIT_ERRORS{{"FOR", 5}, ERROR_SYNTAX, {"FOR", 6}};
constexpr ExpressionErrors STEP_ERRORS{{"FOR", 7}, ERROR_SYNTAX, {"FOR", 8}};

/// Evaluates one of FOR's expressions; false after an error.
bool eval_number(Machine& m, const ExpressionErrors& errors, double& number) {
    number = eval_argument(m);
    if (failed(m))
        return false;
    if (m.eval.value.kind == VALUE_STRVAR)
        raise_error(m, errors.string_variable_code, errors.string_variable);
    else if (value_type(m) != TYPE_NUMBER)
        raise_error(m, m.eval.value.kind == VALUE_NUMVAR ? ERROR_VARIABLE : ERROR_SYNTAX, errors.not_numeric);
    return !failed(m);
}

/// The index of the open loop over this variable, -1 when there is none.
int find_loop(const Machine& m, CellIndex cell) {
    for (int i = 0; i < m.program.for_depth; ++i) {
        if (m.program.for_frames[static_cast<std::size_t>(i)].cell == cell)
            return i;
    }
    return -1;
}

/// Reads "v = start" and stores the start value; NO_CELL after an error.
CellIndex read_loop_start(Machine& m) {
    if (next_token(m) != TOKEN_NUMVAR) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_FOR_VARIABLE);
        return NO_CELL;
    }
    const CellIndex cell = m.eval.value.cell;
    if (next_token(m) != TOKEN_EQUALS) {
        raise_error(m, ERROR_SYNTAX, MESSAGE_FOR_EQUALS);
        return NO_CELL;
    }
    double start = 0;
    if (!eval_number(m, START_ERRORS, start))
        return NO_CELL;
    store_number(cell_at(m, cell), start);
    return cell;
}

/// Reads "TO limit [STEP step]" up to the end of the statement; false after an error.
bool read_loop_range(Machine& m, double& limit, double& step) {
    if (m.eval.token != TOKEN_TO) {
        raise_token_error(m, MESSAGE_FOR_SYNTAX, m.eval.token);
        return false;
    }
    if (!eval_number(m, LIMIT_ERRORS, limit))
        return false;
    if (m.eval.token == TOKEN_STEP && !eval_number(m, STEP_ERRORS, step))
        return false;
    if (!is_statement_end(m.eval.token))
        raise_token_error(m, MESSAGE_FOR_SYNTAX, m.eval.token);
    return !failed(m);
}

/// Finds the frame that NEXT is about, dropping the loops inside it; null after an error.
ForFrame* select_loop(Machine& m) {
    const TokenCode token = next_token(m);
    if (failed(m))
        return nullptr;
    if (token == TOKEN_NUMVAR) {
        if (cell_at(m, m.eval.value.cell).kind == CELL_STRING) {
            raise_error(m, ERROR_SYNTAX, MESSAGE_NEXT_STRING);
            return nullptr;
        }
        const int loop = find_loop(m, m.eval.value.cell);
        if (loop < 0) {
            raise_error(m, ERROR_NESTING, MESSAGE_NEXT_OTHER_VARIABLE);
            return nullptr;
        }
        m.program.for_depth = loop + 1;
        next_token(m);
    }
    if (!is_statement_end(m.eval.token)) {
        raise_token_error(m, MESSAGE_NEXT_SYNTAX, m.eval.token);
        return nullptr;
    }
    return &m.program.for_frames[static_cast<std::size_t>(m.program.for_depth - 1)];
}

/// Whether the loop is over. Only the direction of the step is rounded; a step that rounds to 0 counts as negative.
bool loop_is_over(const ForFrame& frame, double number) {
    const bool upward = round6(frame.step) > 0;
    return upward ? number > frame.limit : number < frame.limit;
}

} // namespace

void for_statement(Machine& m) {
    const CellIndex cell = read_loop_start(m);
    double limit = 0;
    double step = 1;
    if (cell == NO_CELL || !read_loop_range(m, limit, step))
        return;
    const int open = find_loop(m, cell);
    const int index = open >= 0 ? open : m.program.for_depth;
    if (index == FOR_DEPTH_MAX)
        return raise_error(m, ERROR_NESTING, MESSAGE_FOR_DEPTH, " [MAX:%d]", FOR_DEPTH_MAX);
    m.program.for_depth = index + 1;
    m.program.for_frames[static_cast<std::size_t>(index)] = {
        step, limit, cell, m.program.cur_area, m.program.cur_line, m.eval.next};
    m.eval.stmt_kind = KIND_NONE;
}

void next_statement(Machine& m) {
    if (m.program.for_depth == 0)
        return raise_error(m, ERROR_NESTING, MESSAGE_NEXT_NO_LOOP);
    const ForFrame* frame = select_loop(m);
    if (frame == nullptr)
        return;
    if (frame->area != m.program.cur_area)
        return raise_error(m, ERROR_NESTING, MESSAGE_NEXT_OTHER_AREA);
    double& number = cell_at(m, frame->cell).number;
    number += frame->step;
    if (loop_is_over(*frame, number)) {
        --m.program.for_depth;
        return;
    }
    m.program.cur_line = frame->line;
    m.program.cur_area = frame->area;
    m.eval.next = frame->next;
    m.eval.stmt_kind = KIND_NONE;
    m.eval.token = TOKEN_COLON;
}

} // namespace quillon
