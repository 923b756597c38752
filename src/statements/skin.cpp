// SPDX-License-Identifier: MIT
// GLOAD.
#include "statements/skin.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/variables.h"

namespace quillon {
namespace {

constexpr MessageId MESSAGE_GLOAD_NUMVAR{"GLOAD", 0};
constexpr MessageId MESSAGE_GLOAD_NO_STRING{"GLOAD", 1};

} // namespace

void gload_statement(Machine& m) {
    eval_argument(m);
    if (failed(m))
        return;
    if (m.eval.value.kind == VALUE_NUMVAR)
        raise_error(m, ERROR_SYNTAX, MESSAGE_GLOAD_NUMVAR);
    else if (value_type(m) == TYPE_STRING)
        m.around->host.load_skin(m.eval.value.text);
    else
        raise_error(m, ERROR_SYNTAX, MESSAGE_GLOAD_NO_STRING);
}

} // namespace quillon
