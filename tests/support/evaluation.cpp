// SPDX-License-Identifier: MIT
// Single statements and expressions from texts.
#include "tests/support/evaluation.h"

#include "core/interpreter.h"
#include "core/variables.h"

#include <cstdio>

namespace quillon::testing {
namespace {

/// Texts of the naming catalogue end with a mark, so that what follows can be told from them.
std::string without_marks(std::string_view text) {
    std::string plain(text);
    std::erase(plain, '\x01');
    return plain;
}

std::string shown_result(const Machine& m, double number) {
    const bool string = m.eval.value.kind == VALUE_STRVAR || m.eval.value.kind == VALUE_STRING;
    if (string && m.eval.operand_done)
        return "'" + std::string(m.eval.value.text.view()) + "'";
    char text[64];
    std::snprintf(text, sizeof text, "%.10g", number);
    return text;
}

} // namespace

TokenIndex place_text(Machine& m, std::string_view text) {
    if (text.size() <= m.entry.typed.text.capacity()) {
        set_typed_line(m.entry.typed, text);
        return TYPED;
    }
    ListingFault fault;
    m.listing.pointer = make_listing("[P0]\n0 " + std::string(text), fault);
    return m.listing->areas[0].lines[0].tokens;
}

std::string failure_of(const Machine& m) {
    if (!failed(m))
        return "";
    const std::string_view detail = m.error.error_detail;
    return "ERR" + std::to_string(-number_of(m.error.error_code) - 9) + " " +
           without_marks(detail.substr(0, detail.find("\r\n")));
}

std::string system_message_of(const Machine& m) { return without_marks(m.error.system_message); }

std::string outcome_of(Machine& m, std::string_view text, StmtKind kind) {
    if (m.run.run_state != STATE_COMMAND)
        m.run.run_state = STATE_RUN;
    m.error.error_code = ERROR_NONE;
    m.error.error_detail.clear();
    m.eval.stmt_kind = kind;
    m.eval.next = place_text(m, text);
    m.eval.value.complete = false;
    const double number = eval_statement(m);
    m.eval.next = 0;
    m.eval.token_start = NOWHERE;
    m.program.stmt_start = NOWHERE;
    return !failed(m) ? shown_result(m, number) : failure_of(m);
}

} // namespace quillon::testing
