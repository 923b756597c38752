// SPDX-License-Identifier: MIT
// What the trace window and the window of the extended variables show, as texts.
#pragma once

#include "core/machine.h"

#include <array>
#include <string>
#include <string_view>

namespace quillon {

/// Makes program text in another encoding than UTF-8 readable: UTF-8, whatever the bytes.
using TextDecoder = std::string (*)(std::string_view bytes);

constexpr int TRACED_CELLS = 94; ///< variables with a field of their own: A to Z, then 1 to 68

/// The fields of the trace window (UTF-8).
struct TraceTexts {
    std::string last; ///< the line that was executed last
    std::string next; ///< the line that is executed next, with a marker at the position
    std::string dollar;
    std::string statement_kind;
    std::array<std::string, TRACED_CELLS> variables;
};

/// Empties the fields; those of the variables show that nothing is known.
void reset_trace_texts(TraceTexts& texts);

/// What the machine says now. A variable that was never assigned leaves its field as it is. `decode` is asked for parts
/// of a line that are not UTF-8.
void refresh_trace_texts(TraceTexts& texts, const Machine& m, TextDecoder decode);

/// The field label of a traced cell: "A:" to "Z:", "_1:" to "_9:", "10:" to "68:", with the full-width colons behind
/// all but the first three.
std::string traced_cell_label(int cell);

/// The remaining cells, "069 : value" each, five to a line (CR LF).
std::string extended_variables_text(const Machine& m);

} // namespace quillon
