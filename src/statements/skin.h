// SPDX-License-Identifier: MIT
// GLOAD: a program brings its own character shapes.
#pragma once

namespace quillon {

struct Machine;

void gload_statement(Machine& m);

} // namespace quillon
