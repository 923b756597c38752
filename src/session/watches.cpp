// SPDX-License-Identifier: MIT
// Whether a tick has met a watch.
#include "session/watches.h"

#include "core/interpreter.h"
#include "core/numbers.h"
#include "core/program.h"
#include "core/variables.h"

#include <algorithm>
#include <memory>

namespace quillon {
namespace {

/// The first token of a line, nothing when the area has no such line.
TokenIndex first_token(const Machine& m, int area, int line) {
    const int index = find_line(*m.listing, area, line);
    return index < 0 ? NOWHERE
                     : m.listing->areas[static_cast<std::size_t>(area)].lines[static_cast<std::size_t>(index)].tokens;
}

std::array<char, DISPLAY_WIDTH> shown_text(const Machine& m) {
    std::array<char, DISPLAY_WIDTH> shown{};
    std::copy_n(m.screen.display_line.begin() + m.screen.display_offset, DISPLAY_WIDTH, shown.begin());
    return shown;
}

bool contains(const std::array<char, DISPLAY_WIDTH>& shown, std::string_view text) {
    return std::string_view(shown.data(), shown.size()).find(text) != std::string_view::npos;
}

/// Whether the tick led to the beginning of a line: another one, or the same one again.
bool entered_line(const Machine& m, const BeforeTick& before, const Watch& watch) {
    if (!is_at_statement(m) || m.program.cur_area != watch.area)
        return false;
    const TokenIndex start = first_token(m, watch.area, watch.line);
    return start != NOWHERE && m.program.stmt_start == start && (before.statement != start || before.runs_statement);
}

bool is_met(const Machine& m, const BeforeTick& before, const Watch& watch, std::size_t& cell) {
    switch (watch.kind) {
    case Watch::Kind::LINE: return entered_line(m, before, watch);
    case Watch::Kind::CELL: return !(before.cells[cell++] == cell_at(m, watch.cell));
    case Watch::Kind::DISPLAY: return contains(shown_text(m), watch.text) && !contains(before.shown, watch.text);
    case Watch::Kind::ERROR: return failed(m) && !before.failed;
    }
    return false;
}

/// The value of a condition as the machine sees one: a number other than 0, or a string that is not empty.
bool holds(const Value& value) {
    return value.kind == VALUE_STRING || value.kind == VALUE_STRVAR ? !value.text.empty() : value.number != 0;
}

/// A message with the values of its expressions in their places.
std::string filled_message(const Machine& m, const std::string& message) {
    std::string text;
    std::size_t from = 0;
    for (std::size_t open = 0; (open = message.find('{', from)) != std::string::npos;) {
        const std::size_t close = message.find('}', open);
        if (close == std::string::npos)
            break;
        text += message.substr(from, open - from);
        std::string problem;
        const auto value = evaluate_on_copy(m, message.substr(open + 1, close - open - 1), problem);
        text += !value ? "(" + problem + ")"
                : value->kind == VALUE_STRING || value->kind == VALUE_STRVAR
                    ? std::string(value->text)
                    : std::string(format_general(value->number, 12));
        from = close + 1;
    }
    return text + message.substr(from);
}

/// Any character of a copy's host would be one of the session's.
const Surroundings& silent_surroundings(const Machine& m) {
    static thread_local Surroundings silent;
    silent.language = m.around->language;
    return silent;
}

} // namespace

std::string_view stop_reason_word(StopReason reason) {
    constexpr std::string_view WORDS[] = {"breakpoint", "watchpoint", "error", "waits",
                                          "ended",      "limit",      "start", "step"};
    return WORDS[static_cast<std::size_t>(reason)];
}

std::optional<int> line_to_stop_at(const Machine& m, int area, int line) {
    const auto& lines = m.listing->areas[static_cast<std::size_t>(area)].lines;
    const auto found = std::find_if(lines.begin(), lines.end(), [line](const auto& l) { return l.number >= line; });
    return found == lines.end() ? std::nullopt : std::optional(found->number);
}

bool is_at_statement(const Machine& m) {
    if (m.run.run_state != STATE_RUN || failed(m) || m.run.program_ended || m.program.stmt_start == NOWHERE)
        return false;
    switch (m.eval.stmt_kind) {
    case KIND_PRINT:
    case KIND_INPUT:
    case KIND_SCROLL:
    case KIND_PROMPT:
    case KIND_INPUT_ERROR:
    case KIND_PROMPT_AGAIN:
    case KIND_RESULT: return false;
    default: return m.run.scroll.wait_counter == 0;
    }
}

bool runs_statement_next(const Machine& m) {
    const bool tone_holds = m.sound.sound_holds_run && m.sound.sound_ticks_left > 1;
    const bool step_waits =
        m.trace.trace_mode && m.run.base_state != STATE_COMMAND && !m.trace.trace_step_request && !m.keys.enter_request;
    return is_at_statement(m) && !tone_holds && !step_waits;
}

void note_before_tick(const Machine& m, const std::vector<Watch>& watches, BeforeTick& before) {
    before.runs_statement = runs_statement_next(m);
    before.statement = m.program.stmt_start;
    before.gosub_depth = m.program.gosub_depth;
    before.failed = failed(m);
    before.waited = waits_for_person(m);
    before.cells.clear();
    for (const Watch& watch : watches) {
        if (watch.kind == Watch::Kind::CELL)
            before.cells.push_back(cell_at(m, watch.cell));
        else if (watch.kind == Watch::Kind::DISPLAY)
            before.shown = shown_text(m);
    }
}

std::optional<Stop> watch_met(const Machine& m, const BeforeTick& before, std::vector<Watch>& watches,
                              const std::function<void(const std::string&)>& log_message, bool count) {
    std::optional<Stop> stop;
    std::size_t cell = 0;
    for (Watch& watch : watches) {
        if (!is_met(m, before, watch, cell))
            continue;
        std::string problem;
        if (!watch.condition.empty()) {
            const auto value = evaluate_on_copy(m, watch.condition, problem);
            if (value && !holds(*value))
                continue;
        }
        if (count && ++watch.hits < watch.hits_wanted)
            continue;
        if (!watch.message.empty() && problem.empty()) {
            if (count)
                log_message(filled_message(m, watch.message));
            continue;
        }
        if (!stop)
            stop = {watch.kind == Watch::Kind::LINE ? StopReason::BREAKPOINT : StopReason::WATCHPOINT, watch.id,
                    problem};
    }
    return stop;
}

std::optional<Value> evaluate_on_copy(const Machine& m, std::string_view expression, std::string& problem) {
    const auto copy = std::make_unique<Machine>(m);
    copy->around.pointer = &silent_surroundings(m);
    copy->error.error_code = ERROR_NONE;
    set_typed_line(copy->entry.typed, expression);
    for (const ProgramToken& token : copy->entry.typed.tokens) {
        if (token.code >= STATEMENT_WORD) {
            problem = "A statement is not an expression.";
            return std::nullopt;
        }
    }
    copy->eval.next = TYPED;
    copy->eval.stmt_kind = KIND_CONDITION;
    copy->eval.operand_done = false;
    copy->eval.value = {};
    const double number = eval_statement(*copy);
    if (failed(*copy) || copy->eval.token != TOKEN_END || copy->eval.value.kind == VALUE_NONE) {
        problem = "This is not an expression that can be evaluated here.";
        return std::nullopt;
    }
    Value value = copy->eval.value;
    if (value_type(*copy) == TYPE_NUMBER) {
        value.kind = VALUE_NUMBER;
        value.number = number;
    } else {
        value.kind = VALUE_STRING;
    }
    return value;
}

} // namespace quillon
