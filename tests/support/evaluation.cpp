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
    const bool string = m.value.kind == VALUE_STRVAR || m.value.kind == VALUE_STRING;
    if (string && m.operand_done != 0)
        return "'" + std::string(m.value.text.view()) + "'";
    char text[64];
    std::snprintf(text, sizeof text, "%.10g", number);
    return text;
}

} // namespace

std::string failure_of(const Machine& m) {
    if (m.error_code == ERROR_NONE)
        return "";
    const std::string_view detail = m.error_detail;
    return "ERR" + std::to_string(-m.error_code - 9) + " " + without_marks(detail.substr(0, detail.find("\r\n")));
}

std::string system_message_of(const Machine& m) { return without_marks(m.system_message); }

std::string outcome_of(Machine& m, std::string_view text, int kind) {
    const ExactText line(text);
    if (m.run_state != STATE_COMMAND)
        m.run_state = STATE_RUN;
    m.error_code = ERROR_NONE;
    m.error_detail.clear();
    m.stmt_kind = kind;
    m.scan_ptr = line.begin();
    m.value.complete = 0;
    const double number = eval_statement(m);
    m.scan_ptr = m.token_start = "";
    m.stmt_start = nullptr;
    return m.error_code == ERROR_NONE ? shown_result(m, number) : failure_of(m);
}

} // namespace quillon::testing
