// SPDX-License-Identifier: MIT
// GLOAD.
#include "statements/skin.h"

#include "core/arguments.h"
#include "core/machine.h"
#include "statements/signatures.h"

namespace quillon {

void gload_statement(Machine& m) {
    Arguments arguments;
    if (read_arguments(m, signature_of<TOKEN_GLOAD>(), arguments))
        m.around->host.load_skin(m.eval.value.text);
}

} // namespace quillon
