// SPDX-License-Identifier: MIT
// What holds between ticks: fields by their ranges, everything else by a condition.
#include "core/invariants.h"

#include "core/fields.h"
#include "core/machine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace quillon {
namespace {

bool is_statement_kind(StmtKind kind) {
    switch (kind) {
    case KIND_NONE:
    case KIND_CONDITION:
    case KIND_JUMP:
    case KIND_PRINT:
    case KIND_FOR:
    case KIND_INPUT:
    case KIND_SCROLL:
    case KIND_PROMPT:
    case KIND_INPUT_ERROR:
    case KIND_PROMPT_AGAIN:
    case KIND_CLEARED:
    case KIND_RESULT: return true;
    }
    return false;
}

/// Whether a place lies in the tokens of the listing or of the typed line.
bool is_place(const Machine& m, TokenIndex index) {
    const bool typed = index >= TYPED;
    const std::size_t count = typed ? m.entry.typed.tokens.size() : m.listing->tokens.size();
    const TokenIndex first = typed ? TYPED : 0;
    return index >= first && static_cast<std::size_t>(index - first) < count;
}

bool is_source(const Machine& m, SourceOffset offset) {
    const bool typed = offset >= TYPED;
    const std::size_t size = typed ? m.entry.typed.text.capacity() : m.listing->text.size();
    const SourceOffset first = typed ? TYPED : 0;
    return offset == NOWHERE || (offset >= first && static_cast<std::size_t>(offset - first) <= size);
}

/// An operand that is a variable has its cell.
bool is_operand(const Value& value) {
    const bool needs_cell = value.kind == VALUE_NUMVAR || value.kind == VALUE_STRVAR;
    return value.cell >= NO_CELL && value.cell < CELL_COUNT && (value.cell != NO_CELL || !needs_cell);
}

bool frames_are_alive(const Machine& m) {
    const ProgramPosition& p = m.program;
    return std::all_of(p.for_frames.begin(), p.for_frames.begin() + p.for_depth,
                       [&m](const ForFrame& frame) {
                           return frame.cell >= 0 && frame.cell < CELL_COUNT && is_place(m, frame.next);
                       }) &&
           std::all_of(p.gosub_frames.begin(), p.gosub_frames.begin() + p.gosub_depth,
                       [&m](const GosubFrame& frame) { return is_place(m, frame.next); });
}

bool is_error_code(ErrorCode code) {
    return code == ERROR_NONE || code == ERROR_INPUT || (code >= ERROR_NESTING && code <= ERROR_SYNTAX);
}

/// An INPUT that asks knows for which cell.
bool entry_has_target(const Machine& m) {
    const bool asks =
        m.run.run_state == STATE_INPUT || (m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_PROMPT);
    return is_operand(m.entry.entry_line) && (!asks || m.entry.entry_line.cell != NO_CELL);
}

struct Condition {
    const char* name;
    bool (*holds)(const Machine& m);
};

// clang-format off
constexpr Condition CONDITIONS[] = {
    {"stmt_kind",         [](const Machine& m) { return is_statement_kind(m.eval.stmt_kind); }},
    {"saved_stmt_kind",   [](const Machine& m) { return is_statement_kind(m.run.resume.saved_stmt_kind); }},
    {"kind_after_scroll", [](const Machine& m) { return is_statement_kind(m.run.scroll.kind_after_scroll); }},
    {"stopped",           [](const Machine& m) { return is_statement_kind(m.run.stopped.resume.saved_stmt_kind); }},
    {"base_state",        [](const Machine& m) { return m.run.base_state == STATE_RUN || m.run.base_state == STATE_COMMAND; }},
    {"error_code",        [](const Machine& m) { return is_error_code(m.error.error_code); }},
    {"cur_line",          [](const Machine& m) { return static_cast<std::size_t>(m.program.cur_line) <= current_area(m).lines.size(); }},
    {"stmt_start",        [](const Machine& m) { return m.program.stmt_start == NOWHERE || is_place(m, m.program.stmt_start); }},
    {"next",              [](const Machine& m) { return is_place(m, m.eval.next) && is_place(m, m.entry.saved_next); }},
    {"token_start",       [](const Machine& m) { return is_source(m, m.eval.token_start); }},
    {"for_frames, gosub_frames", frames_are_alive},
    {"value",             [](const Machine& m) { return is_operand(m.eval.value) && is_operand(m.run.resume.value); }},
    {"entry_line",        entry_has_target},
    {"tone",              [](const Machine& m) { return m.sound.tone.samples >= 0 && m.sound.tone.samples <= TONE_SAMPLES_MAX; }},
};
// clang-format on

} // namespace

const char* check_invariants(const Machine& m) {
    for (const Field& field : fields()) {
        const long long number = field.get(m);
        if (number < field.lowest || number > field.highest)
            return field.name.data();
    }
    for (const Condition& condition : CONDITIONS) {
        if (!condition.holds(m))
            return condition.name;
    }
    return nullptr;
}

void require_invariants(const Machine& m) {
    const char* broken = check_invariants(m);
    if (broken == nullptr)
        return;
    std::fprintf(stderr, "quillon: the machine is broken: %s\n", broken);
    std::abort();
}

} // namespace quillon
