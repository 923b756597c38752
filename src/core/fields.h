// SPDX-License-Identifier: MIT
// The record's fields by name: every whole number, code and flag, what values it may have, and who sees it. Scripts,
// invariants, saved states and comparisons read this table; none keeps a list of its own.
#pragma once

#include "core/machine.h"

#include <span>
#include <string>
#include <string_view>

namespace quillon {

/// Who uses a field.
enum FieldUse : unsigned {
    FIELD_SHOWN = 1U << 0,    ///< a script reads it
    FIELD_SETTABLE = 1U << 1, ///< a script may set it
    FIELD_RESET = 1U << 2,    ///< has its default again after `reset_machine`
    FIELD_SETTING = 1U << 3,  ///< outlives runs and loads; the host keeps it between sessions
    FIELD_ADJUSTED = 1U << 4, ///< a window changes it together with the settings
};

struct Field {
    std::string_view name;
    long long (*get)(const Machine& m);
    void (*set)(Machine& m, long long number); ///< `number` lies in the range
    long long lowest;                          ///< the range that holds between ticks
    long long highest;
    unsigned uses; ///< FieldUse
};

/// All fields. Those that are shown come first, in the order in which scripts see them.
std::span<const Field> fields();

/// The field of this name, null when there is none.
const Field* find_field(std::string_view name);

/// Names what differs between two machines, with both values; empty when they are equal.
std::string record_difference(const Machine& a, const Machine& b);

} // namespace quillon
